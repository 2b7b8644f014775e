// Rectangles with a gradient from the bottom left to the top right.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWGradationView.h"

#include "widgets/PanelColours.h"

namespace tesh::bramel {

void BWGradationView::setColours(juce::Colour atBottomLeft, juce::Colour atTopRight) {
  if (atBottomLeft != first || atTopRight != second) {
    first = atBottomLeft;
    second = atTopRight;
    repaint();
  }
}

void BWGradationView::paint(juce::Graphics& graphics) {
  const auto w = static_cast<float>(getWidth());
  const auto h = static_cast<float>(getHeight());
  const float k = (w * w - h * h) / (w * w + h * h);
  graphics.setGradientFill({first, k * w / 2.0F, h + k * h / 2.0F, second, w - k * w / 2.0F, -k * h / 2.0F, false});
  graphics.fillRect(getLocalBounds());
}

BWTabGradationView::BWTabGradationView() {
  gradation.setColours(juce::Colour(colours::kTabsBottomLeft), juce::Colour(colours::kTabsTopRight));
  gradation.setInterceptsMouseClicks(false, false);
  addAndMakeVisible(gradation);
}

}  // namespace tesh::bramel
