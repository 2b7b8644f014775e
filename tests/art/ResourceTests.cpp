// The embedded resources: every picture of the panel in both sets, the fonts, and their lookup.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "art/PictureList.h"
#include "art/PngFile.h"
#include "platform/EmbeddedResources.h"

namespace sivray::art {
namespace {

using tesh::bramel::platform::EmbeddedResource;
using tesh::bramel::platform::embeddedResources;
using tesh::bramel::platform::findEmbeddedResource;

struct Row {
  std::string name;
  int width;
  int height;
};

// Names as the panel asks for them, with blanks already replaced.
std::vector<Row> inventory() {
  std::vector<Row> rows{{"Sivray_background", 768, 468},    {"Sivray_Slider", 50, 43},
                        {"Sivray_Sample_LCD", 71, 31},      {"Sivray_EG_Oneshot", 45, 19},
                        {"Sivray_EG_Gate", 45, 19},         {"Sivray_Group_Off", 33, 18},
                        {"Sivray_Group_A", 33, 18},         {"Sivray_Group_B", 33, 18},
                        {"Sivray_Program_Dec_Off", 35, 24}, {"Sivray_Program_Inc_Off", 36, 24}};
  for (const std::string page : {"0", "1", "2"}) {
    rows.push_back({"Sivray_Layer_" + page, 768, 337});
  }
  for (const std::string state : {"_Off", "_On"}) {
    rows.push_back({"Sivray_Pad" + state, 72, 72});
    rows.push_back({"Sivray_Reverse" + state, 35, 21});
    rows.push_back({"Sivray_MFX" + state, 35, 21});
    rows.push_back({"Sivray_Mute" + state, 39, 24});
    for (const char* const page : {"Sivray_Select_0", "Sivray_Select_1", "Sivray_Select_2"}) {
      rows.push_back({page + state, 72, 25});
    }
  }
  for (const std::string strip : {"0", "1", "2", "3"}) {
    rows.push_back({"Sivray_Knob_Index_32_sweep_strip_" + strip, 32 * 55, 55});
    rows.push_back({"Sivray_Knob_BiDirectional_strip_" + strip, 32 * 55, 55});
  }
  for (const std::string icon : {"factory_white", "factory_orange", "folder_white", "folder_orange"}) {
    rows.push_back({icon, 30, 30});
  }
  for (const std::string row : {"Sivray", "Pads", "Sound", "Character", "Mix", "Effects", "Kits", "Samples"}) {
    rows.push_back({"collection_" + row, 252, 181});
  }
  return rows;
}

juce::Image decode(std::span<const std::uint8_t> bytes) {
  return juce::ImageFileFormat::loadFrom(bytes.data(), bytes.size());
}

TEST(EmbeddedResources, HoldEveryPictureOfThePanelInBothSetsAndNoOther) {
  for (const Row& row : inventory()) {
    for (const int scale : {1, 2}) {
      const juce::Image image = decode(findEmbeddedResource("PNG", row.name + (scale == 2 ? "_2X" : "")));
      EXPECT_EQ(image.getWidth(), scale * row.width) << row.name;
      EXPECT_EQ(image.getHeight(), scale * row.height) << row.name;
    }
  }
  const auto all = embeddedResources();
  const auto pictures =
      std::count_if(all.begin(), all.end(), [](const EmbeddedResource& r) { return r.type == "PNG"; });
  EXPECT_EQ(static_cast<std::size_t>(pictures), 2 * inventory().size());
}

TEST(EmbeddedResources, KeepTheGroundsOpaqueSoThatNothingBehindThemIsPainted) {
  for (const char* ground : {"Sivray_background", "Sivray_Layer_0", "Sivray_Layer_1_2x", "Sivray_Layer_2"}) {
    EXPECT_TRUE(isOpaque(decode(findEmbeddedResource("PNG", ground)))) << ground;
  }
}

TEST(EmbeddedResources, AreFoundByTypeAndNameWhateverTheCaseOfTheName) {
  const auto all = embeddedResources();
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end(), [](const EmbeddedResource& a, const EmbeddedResource& b) {
    return std::pair(a.type, a.name) < std::pair(b.type, b.name);
  }));
  for (const EmbeddedResource& resource : all) {
    EXPECT_EQ(findEmbeddedResource(resource.type, resource.name).data(), resource.bytes.data()) << resource.name;
  }
  EXPECT_EQ(findEmbeddedResource("PNG", "sIvRaY_pAd_oN").data(), findEmbeddedResource("PNG", "SIVRAY_PAD_ON").data());
  for (const char* absent : {"", "SIVRAY_PAD", "SIVRAY_PAD_ON2", "SIVRAY PAD ON", "~"}) {
    EXPECT_TRUE(findEmbeddedResource("PNG", absent).empty()) << absent;
  }
  EXPECT_TRUE(findEmbeddedResource("OTF", "SIVRAY_PAD_ON").empty());
  EXPECT_TRUE(findEmbeddedResource("png", "SIVRAY_PAD_ON").empty());
}

TEST(EmbeddedResources, GiveFacesOfTheRightMake) {
  struct Face {
    std::string resource;
    juce::String family;
    juce::String style;
  };
  for (const Face& face :
       {Face{"Roboto", "Roboto", "Regular"}, Face{"Open_Sans_Regular", "Open Sans", "Regular"},
        Face{"Open_Sans_SemiBold", "Open Sans", "Semibold"}, Face{"Open_Sans_Bold", "Open Sans", "Bold"},
        Face{"Oswald_Medium", "Oswald", "Medium"}, Face{"PF_Arma_Five", "PF Arma Five", "Regular"}}) {
    const auto bytes = findEmbeddedResource("TTF", face.resource);
    ASSERT_FALSE(bytes.empty()) << face.resource;
    const juce::Typeface::Ptr typeface = juce::Typeface::createSystemTypefaceFor(bytes.data(), bytes.size());
    EXPECT_EQ(typeface->getName(), face.family);
    EXPECT_EQ(typeface->getStyle(), face.style);
  }
}

TEST(EmbeddedResources, DrawTheDisplayFaceWithOnePixelToAStrokeAtHeightThirteen) {
  const auto bytes = findEmbeddedResource("TTF", "PF_ARMA_FIVE");
  const juce::Typeface::Ptr face = juce::Typeface::createSystemTypefaceFor(bytes.data(), bytes.size());
  juce::Array<int> glyphs;
  juce::Array<float> places;
  face->getGlyphPositions("I8 ,", glyphs, places);
  juce::Path eight;
  face->getOutlineForGlyph(glyphs[1], eight);
  const juce::Rectangle<float> ink = eight.getBounds() * 13.0F;
  EXPECT_EQ(ink.toNearestIntEdges(), juce::Rectangle<int>(0, -7, 4, 7));
  EXPECT_NEAR(face->getAscent() * 13.0F, 10.0F, 1e-4F);
  EXPECT_NEAR(places[1] * 13.0F, 4.0F, 1e-3F);  // three columns and one of air
  EXPECT_NEAR((places[3] - places[2]) * 13.0F, 4.0F, 1e-3F);
}

TEST(EmbeddedResources, DrawEachLetterOfLatin1InSquaresOfTheDisplayFace) {
  const auto bytes = findEmbeddedResource("TTF", "PF_ARMA_FIVE");
  const juce::Typeface::Ptr face = juce::Typeface::createSystemTypefaceFor(bytes.data(), bytes.size());
  for (std::uint32_t code = 0x21; code <= 0xff; ++code) {
    if (code == 0x7f) {
      code = 0xa1;  // behind the controls and the no-break space
    }
    juce::Array<int> glyphs;
    juce::Array<float> places;
    face->getGlyphPositions(juce::String::charToString(static_cast<juce::juce_wchar>(code)), glyphs, places);
    juce::Path outline;
    face->getOutlineForGlyph(glyphs[0], outline);
    const juce::Rectangle<float> ink = outline.getBounds() * 13.0F;
    EXPECT_FALSE(ink.isEmpty()) << code;
    for (const float edge : {ink.getX(), ink.getY(), ink.getRight(), ink.getBottom()}) {
      EXPECT_NEAR(edge, std::round(edge), 1e-3F) << code;
    }
    EXPECT_GE(ink.getY(), -10.001F) << code;
    EXPECT_LE(ink.getBottom(), 3.001F) << code;
  }
}

TEST(Pictures, KeepEachFramesPixelsInAStrip) {
  for (const Strip& strip : allStrips()) {
    const juce::Image all = decode(findEmbeddedResource("PNG", strip.name));
    for (const int number : {0, 16, 31}) {
      Canvas canvas(strip.side, strip.side, 1);
      strip.draw(canvas, number);
      const juce::Image alone = decode(pngBytes(canvas.image()));
      const juce::Point<int> origin(strip.side * number, 0);
      for (int at = 0; at < strip.side * strip.side; ++at) {
        const juce::Point<int> pixel(at % strip.side, at / strip.side);
        const juce::Point<int> inStrip = origin + pixel;
        ASSERT_EQ(all.getPixelAt(inStrip.x, inStrip.y), alone.getPixelAt(pixel.x, pixel.y)) << strip.name << number;
      }
    }
  }
}

TEST(Pictures, ComeOutWithTheBytesThatTheBuildEmbedded) {
  const juce::File fonts(SIVRAY_FONTS_FOLDER);
  const Lettering lettering(fonts, juce::File(SIVRAY_DISPLAY_FACE));
  const auto expectEmbedded = [](const std::string& name, const std::vector<std::uint8_t>& bytes) {
    const auto embedded = findEmbeddedResource("PNG", name);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), embedded.begin(), embedded.end())) << name;
  };
  for (const Picture& picture : allPictures()) {
    expectEmbedded(picture.name + "_2X", pngBytes(render(picture, lettering, 2)));
  }
  for (const Strip& strip : allStrips()) {
    expectEmbedded(strip.name + "_2X", pngBytes(render(strip, 2)));
  }
}

}  // namespace
}  // namespace sivray::art
