// A control of a continuous value that is dragged; derived classes draw it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <memory>

#include "widgets/BWTrackingView.h"
#include "widgets/SpokenControl.h"

namespace tesh::bramel {

class BWKnobBase : public juce::Component,
                   public ControlBase<IBWContinuousStateControl>,
                   public IBWControlListener,
                   public SpokenControl {
 public:
  BWKnobBase();

  std::shared_ptr<IParameterQuantizer> getQuantizer() const override { return tracking->getQuantizer(); }
  void setQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) override;
  void setStepCount(std::uint64_t count) override;
  float getMinimum() const override { return minimum; }
  void setMinimum(float newMinimum) override { minimum = newMinimum; }
  float getMaximum() const override { return maximum; }
  void setMaximum(float newMaximum) override { maximum = newMaximum; }
  float getValue() const override;
  void setValue(float value) override;
  void notifyChanged() override;

  /// Swaps the positions of minimum and maximum.
  void setInverted(bool isInverted) { inverted = isInverted; }
  /// Dragged up and down instead of left and right.
  void setVertical(bool vertical);
  void setSensitivity(float sensitivity) { tracking->setSensitivity(sensitivity); }
  void setTrackingMode(BWTrackingView::Mode mode) { tracking->setMode(mode); }

  void resized() override;
  void enablementChanged() override;
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 protected:
  /// Updates the picture after a change of value.
  virtual void refresh() {}
  /// The value as a share of the range, 0 to 1, rounded to a state.
  float getNormalisedValue() const { return tracking->getValue(); }
  bool isVertical() const { return tracking->isVertical(); }

 private:
  class SpokenValue;

  void controlValueChanged(IBWControl& control) override;
  void controlGestureBegan(IBWControl& control) override;
  void controlGestureEnded(IBWControl& control) override;
  void controlDoubleClicked(IBWControl& control) override;
  bool isOwn(const IBWControl& control) const { return &control == tracking.get(); }
  /// A value as a share of the range from start to end.
  float normalise(float value) const;
  float start() const { return inverted ? maximum : minimum; }
  float end() const { return inverted ? minimum : maximum; }

  std::shared_ptr<BWTrackingView> tracking = std::make_shared<BWTrackingView>();
  float minimum = 0.0F;
  float maximum = 1.0F;
  bool inverted = false;
};

}  // namespace tesh::bramel
