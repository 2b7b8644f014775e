// A control with several states.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWSwitchBase.h"

#include "widgets/PanelColours.h"

namespace tesh::bramel {

/// The state, for a screen reader.
class BWSwitchBase::SpokenValue : public juce::AccessibilityTextValueInterface {
 public:
  explicit SpokenValue(const BWSwitchBase& spokenSwitch) : control(spokenSwitch) {}
  bool isReadOnly() const override { return true; }
  juce::String getCurrentValueAsString() const override {
    return control.speakValue(juce::String(static_cast<juce::uint64>(control.state)));
  }
  void setValueAsString(const juce::String& /*text*/) override {}

 private:
  const BWSwitchBase& control;
};

BWSwitchBase::BWSwitchBase() {
  tracking->setListener(this);
  tracking->setMouseCursor(juce::MouseCursor::PointingHandCursor);
  addAndMakeVisible(*tracking);
}

void BWSwitchBase::setState(std::uint64_t newState) {
  if (newState != state) {
    state = newState;
    refresh();
    announce(*this);
  }
}

void BWSwitchBase::notifyChanged() {
  refresh();
  ControlBase::notifyChanged();
}

void BWSwitchBase::click() {
  const std::weak_ptr<const bool> token = alive;
  if (!isEnabled() || tracking->isHeld()) {
    return;
  }
  controlGestureBegan(*tracking);
  if (!token.expired()) {
    controlGestureEnded(*tracking);
  }
}

void BWSwitchBase::resized() { tracking->setBounds(getLocalBounds()); }

void BWSwitchBase::enablementChanged() {
  setAlpha(isEnabled() ? 1.0F : colours::kDisabledAlpha);
  tracking->setMouseCursor(isEnabled() ? juce::MouseCursor::PointingHandCursor : juce::MouseCursor::NormalCursor);
}

std::unique_ptr<juce::AccessibilityHandler> BWSwitchBase::createAccessibilityHandler() {
  return std::make_unique<juce::AccessibilityHandler>(
      *this, juce::AccessibilityRole::button,
      juce::AccessibilityActions().addAction(juce::AccessibilityActionType::press, [this] { click(); }),
      juce::AccessibilityHandler::Interfaces(std::make_unique<SpokenValue>(*this)));
}

void BWSwitchBase::controlValueChanged(IBWControl& control) {
  if (isOwn(control)) {
    onTrackingMoved();
  }
}

void BWSwitchBase::controlGestureBegan(IBWControl& control) {
  if (!isOwn(control)) {
    return;
  }
  const std::weak_ptr<const bool> token = alive;
  onTrackingBegan();
  if (!token.expired()) {
    notifyBegin();
  }
}

void BWSwitchBase::controlGestureEnded(IBWControl& control) {
  if (!isOwn(control)) {
    return;
  }
  const std::weak_ptr<const bool> token = alive;
  onTrackingEnded();
  if (!token.expired()) {
    notifyEnd();
  }
}

}  // namespace tesh::bramel
