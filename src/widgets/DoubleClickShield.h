// Keeps the second press of a double click from what the first one has opened under the pointer.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>

namespace tesh::bramel {

/// Lies over a pop-up or its pages, unseen, and catches presses until the button is up and the time of a double click
/// has passed, or the pointer has moved. Message thread only.
class DoubleClickShield final : public juce::Component, private juce::Timer {
 public:
  DoubleClickShield() { setAccessible(false); }

  /// Begins to catch presses where the pointer is now. Call it after the shield has its place.
  void raise();

  bool hitTest(int x, int y) override;
  void mouseExit(const juce::MouseEvent& event) override;

 private:
  bool isNeeded() const;
  void timerCallback() override;
  void lower();

  juce::Point<float> pointer;  ///< When it was raised.
  std::uint32_t raisedAt = 0;  ///< Milliseconds.
};

}  // namespace tesh::bramel
