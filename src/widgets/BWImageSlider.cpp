// A fader whose handle is an image.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWImageSlider.h"

namespace tesh::bramel {

BWImageSlider::BWImageSlider() {
  handle.setInterceptsMouseClicks(false, false);
  handle.setAccessible(false);
  handle.setImagePlacement(juce::RectanglePlacement::stretchToFit);
  addAndMakeVisible(handle);
}

void BWImageSlider::setHandle(const juce::Image& image, int width, int height) {
  handle.setImage(image);
  handleWidth = width;
  handleHeight = height;
  refresh();
}

void BWImageSlider::resized() {
  BWKnobBase::resized();
  refresh();
}

void BWImageSlider::refresh() {
  const auto freeWidth = static_cast<float>(getWidth() - handleWidth);
  const auto freeHeight = static_cast<float>(getHeight() - handleHeight);
  const float t = getNormalisedValue();
  const float x = freeWidth * (isVertical() ? 0.5F : t);
  const float y = freeHeight * (isVertical() ? 1.0F - t : 0.5F);
  handle.setBounds(static_cast<int>(x), static_cast<int>(y), handleWidth, handleHeight);
}

}  // namespace tesh::bramel
