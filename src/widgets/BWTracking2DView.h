// An invisible area that converts the pointer's position to two values from 0 to 1.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>

#include "widgets/ControlBase.h"
#include "widgets/HeldPress.h"

namespace tesh::bramel {

/// Reacts only to the left button, and to one press at a time.
class BWTracking2DView : public juce::Component, public ControlBase<IBWControl> {
 public:
  BWTracking2DView();

  float getValueX() const { return valueX; }
  float getValueY() const { return valueY; }
  bool isHeld() const { return hand.isHeld(); }
  /// Number of states of each axis; 0 is continuous.
  void setSteps(std::uint64_t ofX, std::uint64_t ofY);
  /// Pixels on each side that count as the end of the range.
  void setBorder(juce::BorderSize<int> newBorder) { border = newBorder; }

  void mouseDown(const juce::MouseEvent& event) override;
  void mouseDrag(const juce::MouseEvent& event) override;
  void mouseUp(const juce::MouseEvent& event) override;
  void mouseDoubleClick(const juce::MouseEvent& event) override;

 private:
  void takePosition(const juce::MouseEvent& event);

  float valueX = 0.0F;
  float valueY = 0.0F;
  std::uint64_t stepsX = 0;
  std::uint64_t stepsY = 0;
  juce::BorderSize<int> border;
  HeldPress hand;
};

}  // namespace tesh::bramel
