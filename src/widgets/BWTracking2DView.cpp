// An invisible area that converts the pointer's position to two values from 0 to 1.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWTracking2DView.h"

#include "widgets/DragLaw.h"

namespace tesh::bramel {
namespace {

float part(int distance, int length, std::uint64_t steps) {
  const float value = length > 0 ? static_cast<float>(distance) / static_cast<float>(length) : 0.0F;
  return drag::quantize(value, steps, NormalParameterQuantizer());
}

}  // namespace

BWTracking2DView::BWTracking2DView() {
  setInterceptsMouseClicks(true, true);
  setAccessible(false);
}

void BWTracking2DView::setSteps(std::uint64_t ofX, std::uint64_t ofY) {
  stepsX = ofX;
  stepsY = ofY;
}

void BWTracking2DView::mouseDown(const juce::MouseEvent& event) {
  if (!event.mods.isLeftButtonDown() || !isEnabled() || !hand.begin(event)) {
    return;
  }
  const juce::Component::SafePointer<BWTracking2DView> self(this);
  takePosition(event);
  if (self != nullptr) {
    notifyBegin();
  }
}

void BWTracking2DView::mouseDrag(const juce::MouseEvent& event) {
  if (event.mods.isLeftButtonDown() && hand.isOf(event)) {
    takePosition(event);
  }
}

// A gesture that began always ends, whatever mouse buttons are down.
void BWTracking2DView::mouseUp(const juce::MouseEvent& event) {
  if (hand.end(event)) {
    notifyEnd();
  }
}

void BWTracking2DView::mouseDoubleClick(const juce::MouseEvent& event) {
  if (event.mods.isLeftButtonDown() && isEnabled()) {
    notifyDoubleClick();
  }
}

void BWTracking2DView::takePosition(const juce::MouseEvent& event) {
  const juce::Rectangle<int> area = border.subtractedFrom(getLocalBounds());
  const float x = part(event.x - area.getX(), area.getWidth(), stepsX);
  const float y = part(area.getBottom() - event.y, area.getHeight(), stepsY);
  if (x != valueX || y != valueY) {
    valueX = x;
    valueY = y;
    notifyChanged();
  }
}

}  // namespace tesh::bramel
