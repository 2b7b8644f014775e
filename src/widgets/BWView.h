// A filled and outlined rectangle with round corners, a background for other components.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// Transparent at first. The outline is inside the bounds. Each setter repaints only the area that changes.
class BWView : public juce::Component {
 public:
  BWView();

  void setFill(juce::Colour colour) { rectangle.setFill(colour); }
  void setOutline(juce::Colour colour) { rectangle.setStrokeFill(colour); }
  /// Pixels; 0 draws no outline.
  void setOutlineThickness(float thickness);
  void setCornerSize(float radius) { rectangle.setCornerSize({radius, radius}); }
  juce::Colour getFill() const { return rectangle.getFill().colour; }

  void resized() override { placeRectangle(); }

 private:
  void placeRectangle();

  juce::DrawableRectangle rectangle;
  float outlineThickness = 0.0F;
};

}  // namespace tesh::bramel
