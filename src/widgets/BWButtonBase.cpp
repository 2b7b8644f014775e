// A button of two states.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWButtonBase.h"

#include <utility>

#include "widgets/PanelColours.h"

namespace tesh::bramel {

/// The button, or the toggle if it latches, for a screen reader.
class BWButtonBase::Handler : public juce::AccessibilityHandler {
 public:
  explicit Handler(BWButtonBase& spokenButton)
      : AccessibilityHandler(spokenButton, roleOf(spokenButton), actionsOf(spokenButton),
                             Interfaces(std::make_unique<SpokenValue>(spokenButton))),
        button(spokenButton) {}

  juce::AccessibleState getCurrentState() const override {
    const juce::AccessibleState state = AccessibilityHandler::getCurrentState();
    if (button.momentary) {
      return state;
    }
    return button.on ? state.withCheckable().withChecked() : state.withCheckable();
  }

 private:
  class SpokenValue : public juce::AccessibilityTextValueInterface {
   public:
    explicit SpokenValue(const BWButtonBase& spokenButton) : button(spokenButton) {}
    bool isReadOnly() const override { return true; }
    juce::String getCurrentValueAsString() const override {
      const char* const latched = button.on ? "on" : "off";
      return button.speakValue(button.momentary ? "" : latched);
    }
    void setValueAsString(const juce::String& /*text*/) override {}

   private:
    const BWButtonBase& button;
  };

  static juce::AccessibilityRole roleOf(const BWButtonBase& button) {
    return button.momentary ? juce::AccessibilityRole::button : juce::AccessibilityRole::toggleButton;
  }

  static juce::AccessibilityActions actionsOf(BWButtonBase& button) {
    const auto type = button.momentary ? juce::AccessibilityActionType::press : juce::AccessibilityActionType::toggle;
    return juce::AccessibilityActions().addAction(type, [&button] { button.click(); });
  }

  const BWButtonBase& button;
};

BWButtonBase::BWButtonBase() { setMouseCursor(juce::MouseCursor::PointingHandCursor); }

void BWButtonBase::setState(bool isOn) {
  const bool changed = std::exchange(on, isOn) != isOn;
  refresh();
  if (changed) {
    announce(*this);
  }
}

void BWButtonBase::click() {
  const std::weak_ptr<const bool> token = alive;
  if (!isEnabled() || pressed) {
    return;
  }
  press();
  if (!token.expired()) {
    release();
  }
}

void BWButtonBase::mouseDown(const juce::MouseEvent& event) {
  if (event.mods.isLeftButtonDown() && isEnabled() && !pressed && hand.begin(event)) {
    press();
  }
}

// A gesture that began always ends, whatever mouse buttons are down.
void BWButtonBase::mouseUp(const juce::MouseEvent& event) {
  if (hand.end(event)) {
    release();
  }
}

void BWButtonBase::press() {
  const std::weak_ptr<const bool> token = alive;
  pressed = true;
  on = momentary || !on;
  refresh();
  announce(*this);
  notifyBegin();
  if (!token.expired()) {
    notifyChanged();
  }
}

void BWButtonBase::release() {
  const std::weak_ptr<const bool> token = alive;
  pressed = false;
  if (momentary) {
    on = false;
    notifyChanged();
  }
  if (!token.expired()) {
    refresh();
    notifyEnd();
  }
}

void BWButtonBase::enablementChanged() {
  setAlpha(isEnabled() ? 1.0F : colours::kDisabledAlpha);
  setMouseCursor(isEnabled() ? juce::MouseCursor::PointingHandCursor : juce::MouseCursor::NormalCursor);
}

std::unique_ptr<juce::AccessibilityHandler> BWButtonBase::createAccessibilityHandler() {
  return std::make_unique<Handler>(*this);
}

}  // namespace tesh::bramel
