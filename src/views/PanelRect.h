// A rectangle for compile-time tables.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace tesh::bramel {

/// Pixels at 100 %.
struct PanelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  // Implicit, so that a table's row can be used wherever JUCE takes a rectangle.
  operator juce::Rectangle<int>() const { return {x, y, width, height}; }
};

/// Width and height in pixels at 100 %.
struct PanelSize {
  int width = 0;
  int height = 0;
};

}  // namespace tesh::bramel
