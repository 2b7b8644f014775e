// The positions of pop-ups and tooltips.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "views/PopupPlacement.h"
#include "views/TooltipLayout.h"

namespace tesh::bramel {
namespace {

using Place = juce::Rectangle<int>;

Place placed(Place anchor, juce::Point<int> size, std::vector<UIPopupDirection> directions) {
  return placePopup(anchor, {768, 468}, size, directions);
}

TEST(PopupPlacement, PutsAPopupOnEachSideOfItsAnchorAndAlignsIt) {
  const Place anchor{300, 200, 100, 50};
  const std::array<juce::Point<int>, 14> expected{{{228, 200},
                                                   {228, 215},
                                                   {228, 230},
                                                   {412, 200},
                                                   {412, 215},
                                                   {412, 230},
                                                   {300, 168},
                                                   {320, 168},
                                                   {340, 168},
                                                   {300, 262},
                                                   {320, 262},
                                                   {340, 262},
                                                   {320, 215},
                                                   {0, 0}}};
  for (int direction = 0; direction < 14; ++direction) {
    const Place place = placed(anchor, {60, 20}, {static_cast<UIPopupDirection>(direction)});
    EXPECT_EQ(place, Place(expected[static_cast<std::size_t>(direction)].x,
                           expected[static_cast<std::size_t>(direction)].y, 60, 20))
        << "direction " << direction;
  }
}

TEST(PopupPlacement, TakesTheFirstDirectionThatFitsElseMovesTheFirst) {
  using enum UIPopupDirection;
  EXPECT_EQ(placed({34, 10, 55, 55}, {60, 40}, {aboveCentre, belowCentre}), Place(32, 77, 60, 40));
  EXPECT_EQ(placed({34, 193, 55, 55}, {60, 40}, {aboveCentre, belowCentre}), Place(32, 141, 60, 40));
  EXPECT_EQ(placed({0, 10, 20, 400}, {60, 40}, {aboveCentre, belowCentre}), Place(12, 12, 60, 40));
  EXPECT_EQ(placed({41, 81, 152, 23}, {280, 420}, {}), Place(205, 12, 280, 420));
  EXPECT_EQ(placed({700, 440, 40, 20}, {100, 60}, {rightTop}), Place(656, 396, 100, 60));
  EXPECT_EQ(placed({300, 200, 10, 10}, {900, 500}, {over}), Place(12, 12, 900, 500)) << "too large for the editor";
}

TEST(TooltipLayout, RoundsTheWidthUpToFourAndKeepsAShape) {
  const TooltipLayout wide = layOutTooltip(93.0F, 13.0F, 20.0F, 19.0F);
  EXPECT_EQ(wide.size, juce::Point<int>(112, 40));
  EXPECT_EQ(wide.value, juce::Rectangle<float>(8, 17, 96, 19));
  const TooltipLayout nameless = layOutTooltip(0.0F, 0.0F, 5.0F, 19.0F);
  EXPECT_EQ(nameless.size, juce::Point<int>(46, 27));
  EXPECT_EQ(nameless.value.getY(), 4.0F);
}

}  // namespace
}  // namespace tesh::bramel
