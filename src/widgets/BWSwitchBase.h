// A control with several states that is pressed or dragged. Derived classes define a press and draw it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <memory>

#include "widgets/BWTracking2DView.h"
#include "widgets/SpokenControl.h"

namespace tesh::bramel {

class BWSwitchBase : public juce::Component,
                     public ControlBase<IBWMultiStateControl>,
                     public IBWControlListener,
                     public SpokenControl {
 public:
  BWSwitchBase();

  std::uint64_t getStateCount() const override { return 0; }
  std::uint64_t getState() const override { return state; }
  void setState(std::uint64_t newState) override;
  void notifyChanged() override;

  /// Presses and releases like a user. For screen readers.
  void click();

  void resized() override;
  void enablementChanged() override;
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 protected:
  /// Events of the tracking view, called before the listener is notified. They may notify, and so delete the switch.
  virtual void onTrackingMoved() {}
  virtual void onTrackingBegan() {}
  virtual void onTrackingEnded() {}
  /// Updates the picture after a change of state.
  virtual void refresh() {}

 private:
  class SpokenValue;

  void controlValueChanged(IBWControl& control) override;
  void controlGestureBegan(IBWControl& control) override;
  void controlGestureEnded(IBWControl& control) override;
  bool isOwn(const IBWControl& control) const { return &control == tracking.get(); }

  std::shared_ptr<const bool> alive = std::make_shared<const bool>(true);
  std::shared_ptr<BWTracking2DView> tracking = std::make_shared<BWTracking2DView>();
  std::uint64_t state = 0;
};

}  // namespace tesh::bramel
