// The shield's timer and its check of the pointer.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/DoubleClickShield.h"

namespace tesh::bramel {
namespace {

/// Largest movement of the pointer within a double click, in pixels.
constexpr float kTremble = 8.0F;

constexpr int kMillisecondsUntilNextLook = 50;

/// The mouse source that is pressed, else the main one.
juce::MouseInputSource pressingSource() {
  auto& desktop = juce::Desktop::getInstance();
  const auto* const dragging = desktop.getDraggingMouseSource(0);
  return dragging == nullptr ? desktop.getMainMouseSource() : *dragging;
}

}  // namespace

void DoubleClickShield::raise() {
  pointer = getLocalPoint(nullptr, pressingSource().getScreenPosition());
  raisedAt = juce::Time::getMillisecondCounter();
  setVisible(true);
  startTimer(juce::MouseEvent::getDoubleClickTimeout());
}

bool DoubleClickShield::isNeeded() const {
  const auto passed = juce::Time::getMillisecondCounter() - raisedAt;
  return passed < static_cast<std::uint32_t>(juce::MouseEvent::getDoubleClickTimeout()) ||
         juce::Desktop::getInstance().getNumDraggingMouseSources() > 0;
}

bool DoubleClickShield::hitTest(int x, int y) {
  return isNeeded() && juce::Point<int>(x, y).toFloat().getDistanceFrom(pointer) <= kTremble;
}

void DoubleClickShield::mouseExit(const juce::MouseEvent& /*event*/) { lower(); }

void DoubleClickShield::timerCallback() {
  if (isNeeded()) {
    startTimer(kMillisecondsUntilNextLook);
  } else {
    lower();
  }
}

void DoubleClickShield::lower() {
  stopTimer();
  setVisible(false);
}

}  // namespace tesh::bramel
