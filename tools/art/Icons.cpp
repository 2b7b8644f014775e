// Flat signs: the step arrows beside the kit's name and the marks of the two banks.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"
#include "Palette.h"

namespace sivray::art {

void drawStepArrow(Canvas& canvas, Direction direction) {
  constexpr Point middle{17.5F, 16.5F};
  constexpr float reach = 3.75F;
  constexpr float halfHeight = 5.5F;
  const float ahead = direction == Direction::next ? reach : -reach;
  canvas.fill(polygon({middle.translated(ahead, 0.0F), middle.translated(-ahead, halfHeight),
                       middle.translated(-ahead, -halfHeight)}),
              kPeriwinkle);
}

void drawFactoryIcon(Canvas& canvas, juce::Colour colour) {
  canvas.fill(polygon({{7.0F, 22.0F},
                       {7.0F, 13.5F},
                       {12.0F, 16.5F},
                       {12.0F, 13.5F},
                       {17.0F, 16.5F},
                       {17.0F, 8.0F},
                       {20.0F, 8.0F},
                       {20.0F, 16.5F},
                       {23.0F, 16.5F},
                       {23.0F, 22.0F}}),
              colour);
}

void drawFolderIcon(Canvas& canvas, juce::Colour colour) {
  canvas.fill(polygon({{7.0F, 22.0F}, {7.0F, 9.5F}, {13.0F, 9.5F}, {15.0F, 11.5F}, {23.0F, 11.5F}, {23.0F, 22.0F}}),
              colour);
}

}  // namespace sivray::art
