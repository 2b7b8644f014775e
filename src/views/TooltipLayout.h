// Positions the two lines of a tooltip, and sizes its box.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cmath>

namespace tesh::bramel {

/// Panel pixels, local to the box.
struct TooltipLayout {
  juce::Point<int> size;
  juce::Rectangle<float> name;  ///< Has height 0 if the tooltip has no name.
  juce::Rectangle<float> value;
};

/// `nameWidth` and `valueWidth` are the widths of the texts; `nameHeight` is the height of the name's font, 0 without a
/// name. The box's width is rounded up to a multiple of 4, so that it does not jitter while the value changes, and is
/// at least 1.6 times the text's height.
inline TooltipLayout layOutTooltip(float nameWidth, float nameHeight, float valueWidth, float valueHeight) {
  constexpr float kSide = 8.0F;
  constexpr float kTop = 4.0F;
  const float textHeight = valueHeight + nameHeight;
  const float width = std::max(4.0F * std::ceil(std::max(nameWidth, valueWidth) / 4.0F), 1.6F * textHeight);
  return {{static_cast<int>(width + 2.0F * kSide), static_cast<int>(textHeight + 2.0F * kTop)},
          {kSide, kTop, width, nameHeight},
          {kSide, kTop + nameHeight, width, valueHeight}};
}

}  // namespace tesh::bramel
