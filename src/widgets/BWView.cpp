// A filled and outlined rectangle with round corners.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWView.h"

namespace tesh::bramel {

BWView::BWView() {
  rectangle.setAccessible(false);
  rectangle.setFill(juce::Colours::transparentBlack);
  rectangle.setStrokeFill(juce::Colours::transparentBlack);
  addAndMakeVisible(rectangle);
}

void BWView::setOutlineThickness(float thickness) {
  outlineThickness = thickness;
  rectangle.setStrokeThickness(thickness);
  placeRectangle();
}

void BWView::placeRectangle() { rectangle.setRectangle(getLocalBounds().toFloat().reduced(outlineThickness * 0.5F)); }

}  // namespace tesh::bramel
