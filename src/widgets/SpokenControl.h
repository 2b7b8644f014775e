// A control for screen readers: its name is the component's title (`setTitle`), its value a text that the view
// provides.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <optional>
#include <utility>

namespace tesh::bramel {

/// Base of knobs, faders, buttons and switches. Without a function the value is read as a plain number or state.
class SpokenControl {
 public:
  virtual ~SpokenControl() = default;

  /// The function is called whenever the value is read. It may use only objects that outlive the control.
  void setValueText(std::function<juce::String()> textOfValue) { valueText = std::move(textOfValue); }

  /// The normalised value for a text, or nothing if it means none. Without this function a text is read as a number.
  using ValueOfText = std::function<std::optional<float>(const juce::String&)>;
  void setValueOfText(ValueOfText valueOfText) { textValue = std::move(valueOfText); }

 protected:
  juce::String speakValue(const juce::String& plain) const { return valueText ? valueText() : plain; }
  std::optional<float> valueSpokenAs(const juce::String& text) const {
    return textValue ? textValue(text) : std::optional(text.getFloatValue());
  }
  /// Tells screen readers that the component's value has changed.
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
