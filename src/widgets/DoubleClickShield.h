// Keeps the second press of a double click from the component that the first press opened under the pointer.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>

namespace tesh::bramel {

/// An invisible layer over a pop-up or its pages. It catches presses until the button is up and either the double-click
/// time has passed or the pointer has moved. Message thread only.
class DoubleClickShield final : public juce::Component, private juce::Timer {
 public:
  DoubleClickShield() { setAccessible(false); }

  /// Starts to catch presses at the pointer's position. Call it after the shield has been placed.
  void raise();

  bool hitTest(int x, int y) override;
  void mouseExit(const juce::MouseEvent& event) override;

 private:
  bool isNeeded() const;
  void timerCallback() override;
  void lower();

  juce::Point<float> pointer;  ///< The pointer's position at `raise`.
  std::uint32_t raisedAt = 0;  ///< Milliseconds.
};

}  // namespace tesh::bramel
