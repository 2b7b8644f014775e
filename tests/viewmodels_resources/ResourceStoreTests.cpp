// Fonts and images by name, from resources that the test brings.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
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

TEST_F(Resources, CutsAFilmStripIntoFramesOnce) {
  resources.add("PNG", "A_KNOB_STRIP_2X", NotedResources::png(21, 7));
  const Box last = store.getImage("A knob_2", 2);
  EXPECT_EQ(image(last).getBounds(), juce::Rectangle<int>(0, 0, 7, 7));
  EXPECT_EQ(image(last).getPixelData(), image(store.getImage("A knob_2", 2)).getPixelData());
  EXPECT_NE(image(last).getPixelData(), image(store.getImage("A knob_0", 2)).getPixelData());
  EXPECT_EQ(resources.asked, (std::vector<std::string>{"PNG A_knob_2_2X", "PNG A_knob_STRIP_2X"}));
  for (const char* const absent : {"A knob_3", "A knob_00", "A knob_", "A knob2", "_2", "2", "A knob_2_"}) {
    EXPECT_EQ(store.getImage(absent, 2), nullptr) << absent;
  }
  EXPECT_EQ(std::count(resources.asked.begin(), resources.asked.end(), "PNG A_knob_STRIP_2X"), 1);
  EXPECT_EQ(store.getImage("A knob_0", 1), nullptr);
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

}  // namespace
}  // namespace tesh::bramel
