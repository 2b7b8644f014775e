// A button of two states, latching or momentary; derived classes draw it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

#include "widgets/ControlBase.h"
#include "widgets/HeldPress.h"
#include "widgets/SpokenControl.h"

namespace tesh::bramel {

/// Reacts only to the left button, to one press at a time, and not while disabled (`setEnabled`). A press notifies
/// begin and change, a release end. A momentary button is on while it is held, and notifies change again before end.
class BWButtonBase : public juce::Component, public ControlBase<IBWTwoStateControl>, public SpokenControl {
 public:
  BWButtonBase();

  bool getState() const override { return on; }
  void setState(bool isOn) override;
  void setMomentary(bool isMomentary) { momentary = isMomentary; }
  bool isMomentary() const { return momentary; }
  bool isPressed() const { return pressed; }

  /// Presses and releases like a user. For screen readers.
  void click();

  void mouseDown(const juce::MouseEvent& event) override;
  void mouseUp(const juce::MouseEvent& event) override;
  void enablementChanged() override;
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 protected:
  /// Updates the picture after a change of state.
  virtual void refresh() {}

 private:
  class Handler;

  void press();
  void release();

  std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
  bool on = false;
  bool momentary = false;
  bool pressed = false;
  HeldPress hand;
};

}  // namespace tesh::bramel
