// Flat signs: the step arrows beside the kit's name and the marks of the two banks.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Elements.h"
#include "Palette.h"

namespace sivray::art {

void drawStepArrow(Canvas& canvas, Direction direction) {
  // The upright edge lies between two columns of pixels.
  constexpr Point middle{17.5F, 16.5F};
  constexpr float tip = 4.0F;
  constexpr float foot = 3.5F;
  constexpr float halfHeight = 5.5F;
  const float way = direction == Direction::next ? 1.0F : -1.0F;
  canvas.fill(polygon({middle.translated(tip * way, 0.0F), middle.translated(-foot * way, halfHeight),
                       middle.translated(-foot * way, -halfHeight)}),
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
  canvas.fill(polygon({{7.0F, 22.0F}, {7.0F, 9.5F}, {13.0F, 9.5F}, {14.5F, 11.5F}, {23.0F, 11.5F}, {23.0F, 22.0F}}),
              colour);
}

}  // namespace sivray::art
