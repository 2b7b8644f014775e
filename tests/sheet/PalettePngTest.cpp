// PNG files with a palette: another reader finds the nearest colours in them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "sheet/PalettePng.h"

namespace sivray {
namespace {

TEST(PalettePng, ShowsEachPixelInTheNearestColour) {
  const std::array<juce::Colour, 3> colours{juce::Colours::black, juce::Colour(0xffb8325f), juce::Colours::white};
  juce::Image image(juce::Image::RGB, 7, 2, true, juce::SoftwareImageType());
  image.setPixelAt(1, 0, juce::Colour(0xffa03050));
  image.setPixelAt(6, 1, juce::Colour(0xfff0f0f0));
  const auto bytes = palettePngOf(image, colours);
  const juce::Image read = juce::ImageFileFormat::loadFrom(bytes.data(), bytes.size());
  ASSERT_EQ(read.getBounds(), image.getBounds());
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 7; ++x) {
      const std::size_t number = x == 1 && y == 0 ? 1 : x == 6 && y == 1 ? 2 : 0;
      EXPECT_EQ(read.getPixelAt(x, y), colours[number]) << x << ' ' << y;
    }
  }
}

}  // namespace
}  // namespace sivray
