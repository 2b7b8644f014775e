// What a screen reader says of a control: its name is the component's title (`setTitle`), its value a text of the
// view's.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <optional>
#include <utility>

namespace tesh::bramel {

/// Knobs, faders, buttons and switches derive from it. Without a function the value is read as a plain number or state.
class SpokenControl {
 public:
  virtual ~SpokenControl() = default;

  /// Called whenever the value is to be read; the function may look only at what outlives the control.
  void setValueText(std::function<juce::String()> textOfValue) { valueText = std::move(textOfValue); }

  /// The normalised value that a text means, nothing for a text without one. Without this function a text is a number.
  using ValueOfText = std::function<std::optional<float>(const juce::String&)>;
  void setValueOfText(ValueOfText valueOfText) { textValue = std::move(valueOfText); }

 protected:
  juce::String speakValue(const juce::String& plain) const { return valueText ? valueText() : plain; }
  std::optional<float> valueSpokenAs(const juce::String& text) const {
    return textValue ? textValue(text) : std::optional(text.getFloatValue());
  }
  /// Tells a screen reader that the value of the component changed.
  static void announce(juce::Component& component) {
    if (auto* const handler = component.getAccessibilityHandler()) {
      handler->notifyAccessibilityEvent(juce::AccessibilityEvent::valueChanged);
    }
  }

 private:
  std::function<juce::String()> valueText;
  ValueOfText textValue;
};

}  // namespace tesh::bramel
