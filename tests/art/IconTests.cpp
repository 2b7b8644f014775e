// The icon in all sizes that desktops use.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include "art/Icon.h"

namespace sivray::art {
namespace {

TEST(Icon, IsALitPadInEverySizeWithRoundCorners) {
  const juce::ScopedJuceInitialiser_GUI juceIsUp;
  for (const int side : kIconSides) {
    const juce::Image icon = drawIcon(side);
    ASSERT_EQ(icon.getBounds(), juce::Rectangle<int>(side, side));
    const juce::Colour face = icon.getPixelAt(side / 2, side * 2 / 5);
    EXPECT_TRUE(face.isOpaque() && face.getRed() > 230 && face.getGreen() > 180 && face.getBlue() < 190) << side;
    EXPECT_LT(icon.getPixelAt(0, side - 1).getAlpha(), 150) << side;
    // The lip below the face is dark.
    const juce::Colour lip = icon.getPixelAt(side / 2, side * 4 / 5);
    EXPECT_TRUE(lip.getAlpha() > 250 && lip.getBrightness() < 0.3F) << side;
  }
}

}  // namespace
}  // namespace sivray::art
