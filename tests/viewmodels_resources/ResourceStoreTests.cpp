// Fonts and images by name, from resources that the test provides.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/NotedResources.h"

namespace tesh::bramel {
namespace {

using cofu::core::boxed::Box;
using cofu::core::boxed::valueIn;
using support::NotedResources;

class Resources : public testing::Test {
 protected:
  static const juce::Image& image(const Box& box) { return *valueIn<juce::Image>(box); }
  juce::Font font(const std::string& name, double height) { return *valueIn<juce::Font>(store.getFont(name, height)); }

  const juce::ScopedJuceInitialiser_GUI juce;
  NotedResources resources;
  ResourceStore store{resources.lookup()};
};

TEST_F(Resources, DecodesAnImageOnceAndSharesItsPixels) {
  resources.add("PNG", "A_KNOB_0", NotedResources::png(5, 3));
  const Box first = store.getImage("A knob_0", 1);
  const Box second = store.getImage("A knob_0", 1);
  EXPECT_EQ(image(first).getBounds(), juce::Rectangle<int>(0, 0, 5, 3));
  EXPECT_EQ(image(first).getPixelData(), image(second).getPixelData());
  EXPECT_EQ(resources.asked, (std::vector<std::string>{"PNG A_knob_0"}));
}

TEST_F(Resources, TakesTheLargerSetByItsOwnNames) {
  resources.add("PNG", "PAD", NotedResources::png(4, 4));
  resources.add("PNG", "PAD_2X", NotedResources::png(8, 8));
  EXPECT_EQ(image(store.getImage("Pad", 2)).getWidth(), 8);
  EXPECT_EQ(image(store.getImage("Pad", 1)).getWidth(), 4);
  EXPECT_EQ(image(store.getImage("Pad", 2)).getWidth(), 8);
  EXPECT_EQ(resources.asked, (std::vector<std::string>{"PNG Pad_2X", "PNG Pad"}));
}

TEST_F(Resources, CutsFilmStripsIntoFramesOnce) {
  resources.add("PNG", "A_KNOB_STRIP_0_2X", NotedResources::png(14, 7));
  resources.add("PNG", "A_KNOB_STRIP_1_2X", NotedResources::png(14, 7));
  const Box last = store.getImage("A knob_2", 2);
  EXPECT_EQ(image(last).getBounds(), juce::Rectangle<int>(0, 0, 7, 7));
  EXPECT_EQ(image(last).getPixelData(), image(store.getImage("A knob_2", 2)).getPixelData());
  EXPECT_NE(image(last).getPixelData(), image(store.getImage("A knob_0", 2)).getPixelData());
  EXPECT_EQ(resources.asked, (std::vector<std::string>{"PNG A_knob_2_2X", "PNG A_knob_STRIP_0_2X",
                                                       "PNG A_knob_STRIP_1_2X", "PNG A_knob_STRIP_2_2X"}));
  for (const char* const absent : {"A knob_4", "A knob_00", "A knob_", "A knob2", "_2", "2", "A knob_2_"}) {
    EXPECT_EQ(store.getImage(absent, 2), nullptr) << absent;
  }
  EXPECT_EQ(std::count(resources.asked.begin(), resources.asked.end(), "PNG A_knob_STRIP_1_2X"), 1);
  EXPECT_EQ(store.getImage("A knob_0", 1), nullptr);
  const Box strip = store.getImage("A knob_STRIP_1", 2);
  for (int pixel = 0; pixel < 49; ++pixel) {
    const int x = pixel % 7;
    const int y = pixel / 7;
    EXPECT_EQ(image(last).getPixelAt(x, y), image(strip).getPixelAt(x, y)) << x << ", " << y;
  }
}

TEST_F(Resources, TriesAMissingImageAgain) {
  EXPECT_EQ(store.getImage("Late", 1), nullptr);
  resources.add("PNG", "LATE", {1, 2, 3});  // Not an image either.
  EXPECT_EQ(store.getImage("Late", 1), nullptr);
  resources.add("PNG", "LATE", NotedResources::png(2, 2));
  EXPECT_NE(store.getImage("Late", 1), nullptr);
}

TEST_F(Resources, LoadsAFaceOnceAndPrefersTrueType) {
  resources.add("TTF", "OSWALD_MEDIUM", NotedResources::face("oswald/Oswald-Medium.ttf"));
  resources.add("OTF", "OSWALD_MEDIUM", {1, 2, 3});
  resources.add("OTF", "OPEN_SANS_BOLD", NotedResources::face("open-sans/OpenSans-Bold.ttf"));
  for (const char* const name : {"Oswald Medium", "Oswald Medium", "Open Sans Bold", "None"}) {
    store.addFont(name);
  }
  EXPECT_EQ(resources.asked, (std::vector<std::string>{"TTF Oswald_Medium", "TTF Open_Sans_Bold", "OTF Open_Sans_Bold",
                                                       "TTF None", "OTF None"}));
  EXPECT_TRUE(font("Oswald Medium", 10.5).getTypefaceName().startsWith("Oswald"));
  EXPECT_EQ(font("Oswald Medium", 10.5).getHeight(), 10.5F);
  EXPECT_EQ(font("Oswald Medium", 10).getTypefacePtr(), font("Oswald Medium", 30).getTypefacePtr());
  EXPECT_EQ(font("Open Sans Bold", 12).getTypefaceName(), "Open Sans");
}

TEST_F(Resources, GivesTheDefaultFaceForAnUnknownName) {
  for (const char* const name : {"Oswald_Medium", "None", ""}) {
    EXPECT_EQ(font(name, 21).getTypefaceName(), juce::Font().getTypefaceName());
    EXPECT_EQ(font(name, 21).getHeight(), 21.0F);
  }
}

#ifdef __linux__

/// Makes the faces in the library the only installed ones.
class OwnFacesInstalled {
 public:
  OwnFacesInstalled() {
    folder.createDirectory();
    settings.replaceWithText("<fontconfig><dir>" SIVRAY_FONTS_FOLDER "</dir><cachedir>" + folder.getFullPathName() +
                             "</cachedir></fontconfig>");
    ::setenv("FONTCONFIG_FILE", settings.getFullPathName().toRawUTF8(), 1);
  }
  ~OwnFacesInstalled() {
    ::unsetenv("FONTCONFIG_FILE");
    folder.deleteRecursively();
  }
  OwnFacesInstalled(const OwnFacesInstalled&) = delete;
  OwnFacesInstalled& operator=(const OwnFacesInstalled&) = delete;

 private:
  const juce::File folder = juce::File::createTempFile("fonts");
  const juce::File settings = folder.getChildFile("fonts.conf");
};

juce::Rectangle<float> boundsOf(const juce::Font& font, const char* letter) {
  juce::Array<int> glyphs;
  juce::Array<float> offsets;
  font.getGlyphPositions(juce::String::fromUTF8(letter), glyphs, offsets);
  juce::Path path;
  font.getTypefacePtr()->getOutlineForGlyph(glyphs[0], path);
  return path.getBounds();
}

TEST_F(Resources, BorrowsLettersThatAFaceLacksFromInstalledOnes) {
  const OwnFacesInstalled installed;
  resources.add("TTF", "OSWALD", NotedResources::face("oswald/Oswald-Medium.ttf"));
  resources.add("TTF", "ROBOTO", NotedResources::face("roboto/Roboto-Regular.ttf"));
  store.addFont("Oswald");
  store.addFont("Roboto");
  const juce::Font narrow = font("Oswald", 100.0);
  constexpr const char* kTau = "\u03a4";      // Not in Oswald.
  constexpr const char* kNowhere = "\u592a";  // In no face.
  const auto borrowed = boundsOf(narrow, kTau);
  const auto own = boundsOf(font("Roboto", 100.0), kTau);
  EXPECT_NEAR(borrowed.getWidth() / borrowed.getHeight(), own.getWidth() / own.getHeight(), 0.2F);
  EXPECT_FLOAT_EQ(borrowed.getBottom(), 0.0F) << "upon the line";
  EXPECT_NE(borrowed, boundsOf(narrow, kNowhere));
  EXPECT_EQ(boundsOf(narrow, kNowhere), boundsOf(narrow, "\u9f13")) << "the face's own box";
  EXPECT_FLOAT_EQ(narrow.getStringWidthFloat(juce::String::fromUTF8("AV\u03a4AV")),
                  2.0F * narrow.getStringWidthFloat("AV") + narrow.getStringWidthFloat(juce::String::fromUTF8(kTau)));

  const juce::Typeface::Ptr plain = juce::Typeface::createSystemTypefaceFor(
      NotedResources::face("oswald/Oswald-Medium.ttf").data(), NotedResources::face("oswald/Oswald-Medium.ttf").size());
  EXPECT_EQ(boundsOf(narrow, "\u0141"), boundsOf(juce::Font(plain), "\u0141")) << "its own letters stay its own";
}

#endif

}  // namespace
}  // namespace tesh::bramel
