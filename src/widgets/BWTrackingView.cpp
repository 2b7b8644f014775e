// An invisible area that converts a drag to a value from 0 to 1.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWTrackingView.h"

#include <utility>

namespace tesh::bramel {
namespace {

using Guard = juce::Component::SafePointer<BWTrackingView>;

/// Number of clicks that is reported as a double click.
constexpr int kDoubleClick = 2;

drag::Pointer pointerOf(const juce::MouseEvent& event) { return {event.x, event.y}; }

}  // namespace

BWTrackingView::BWTrackingView() {
  setAccessible(false);
  updateCursor();
}

void BWTrackingView::setQuantizer(std::shared_ptr<IParameterQuantizer> newQuantizer) {
  if (newQuantizer != nullptr) {
    quantizer = std::move(newQuantizer);
  }
}

void BWTrackingView::setVertical(bool vertical) {
  settings.vertical = vertical;
  updateCursor();
}

void BWTrackingView::updateCursor() {
  const juce::MouseCursor& along = settings.vertical ? cursors->upDown : cursors->leftRight;
  setMouseCursor(isEnabled() ? along : juce::MouseCursor(juce::MouseCursor::NormalCursor));
}

void BWTrackingView::setValueQuietly(float newValue) { value = drag::quantize(newValue, stepCount, *quantizer); }

void BWTrackingView::moveTo(float newValue) {
  if (hand.isHeld()) {
    take(newValue);
    return;
  }
  const Guard self(this);
  notifyBegin();
  if (self != nullptr) {
    take(newValue);
  }
  if (self != nullptr) {
    notifyEnd();
  }
}

void BWTrackingView::mouseDown(const juce::MouseEvent& event) {
  if (!event.mods.isLeftButtonDown() || !isEnabled() || !hand.begin(event)) {
    return;
  }
  const Guard self(this);
  if (mode == Mode::relative) {
    state = {pointerOf(event), seconds(), value};
  } else {
    takePosition(event);
  }
  if (self != nullptr) {
    notifyBegin();
  }
  if (self != nullptr && event.getNumberOfClicks() == kDoubleClick) {
    notifyDoubleClick();
  }
}

void BWTrackingView::mouseDrag(const juce::MouseEvent& event) {
  if (!event.mods.isLeftButtonDown() || !hand.isOf(event)) {
    return;
  }
  if (mode == Mode::absolute) {
    takePosition(event);
    return;
  }
  drag::advance(state, settings, pointerOf(event), seconds(), event.mods.isAltDown());
  take(state.rawValue);
}

// A gesture that began always ends, whatever mouse buttons are down.
void BWTrackingView::mouseUp(const juce::MouseEvent& event) {
  if (hand.end(event)) {
    notifyEnd();
  }
}

void BWTrackingView::take(float newValue) {
  const float quantized = drag::quantize(newValue, stepCount, *quantizer);
  if (quantized != value) {
    value = quantized;
    notifyChanged();
  }
}

void BWTrackingView::takePosition(const juce::MouseEvent& event) {
  take(drag::positionOf(pointerOf(event), getWidth(), getHeight(), settings.vertical));
}

}  // namespace tesh::bramel
