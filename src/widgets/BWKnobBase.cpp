// A control of a continuous value that is dragged.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWKnobBase.h"

#include <utility>

#include "widgets/PanelColours.h"

namespace tesh::bramel {

/// The value, for a screen reader.
class BWKnobBase::SpokenValue : public juce::AccessibilityValueInterface {
 public:
  explicit SpokenValue(BWKnobBase& spokenKnob) : knob(spokenKnob) {}

  bool isReadOnly() const override { return !knob.isEnabled(); }
  double getCurrentValue() const override { return static_cast<double>(knob.getValue()); }
  juce::String getCurrentValueAsString() const override { return knob.speakValue(juce::String(knob.getValue(), 2)); }
  void setValue(double value) override { knob.tracking->moveTo(knob.normalise(static_cast<float>(value))); }
  void setValueAsString(const juce::String& text) override {
    if (const auto value = knob.valueSpokenAs(text)) {
      setValue(static_cast<double>(*value));
    }
  }

  AccessibleValueRange getRange() const override {
    const std::uint64_t steps = knob.tracking->getStepCount();
    const auto low = static_cast<double>(knob.minimum);
    const auto high = static_cast<double>(knob.maximum);
    constexpr double kContinuousStep = 0.01;
    return {{low, high}, (high - low) * (steps > 1 ? 1.0 / static_cast<double>(steps - 1) : kContinuousStep)};
  }

 private:
  BWKnobBase& knob;
};

BWKnobBase::BWKnobBase() {
  tracking->setListener(this);
  addAndMakeVisible(*tracking);
}

void BWKnobBase::setQuantizer(std::shared_ptr<IParameterQuantizer> quantizer) {
  tracking->setQuantizer(std::move(quantizer));
}

void BWKnobBase::setStepCount(std::uint64_t count) {
  tracking->setStepCount(count);
  refresh();
}

void BWKnobBase::setVertical(bool vertical) {
  tracking->setVertical(vertical);
  refresh();
}

float BWKnobBase::getValue() const { return start() + (end() - start()) * tracking->getValue(); }

float BWKnobBase::normalise(float value) const { return (value - start()) / (end() - start()); }

void BWKnobBase::setValue(float value) {
  const float before = tracking->getValue();
  tracking->setValueQuietly(normalise(value));
  refresh();
  if (tracking->getValue() != before) {
    announce(*this);
  }
}

void BWKnobBase::notifyChanged() {
  refresh();
  announce(*this);
  ControlBase::notifyChanged();
}

void BWKnobBase::resized() { tracking->setBounds(getLocalBounds()); }

void BWKnobBase::enablementChanged() { setAlpha(isEnabled() ? 1.0F : colours::kDisabledAlpha); }

std::unique_ptr<juce::AccessibilityHandler> BWKnobBase::createAccessibilityHandler() {
  return std::make_unique<juce::AccessibilityHandler>(
      *this, juce::AccessibilityRole::slider, juce::AccessibilityActions(),
      juce::AccessibilityHandler::Interfaces(std::make_unique<SpokenValue>(*this)));
}

void BWKnobBase::controlValueChanged(IBWControl& control) {
  if (isOwn(control)) {
    notifyChanged();
  }
}

void BWKnobBase::controlGestureBegan(IBWControl& control) {
  if (isOwn(control)) {
    notifyBegin();
  }
}

void BWKnobBase::controlGestureEnded(IBWControl& control) {
  if (isOwn(control)) {
    notifyEnd();
  }
}

void BWKnobBase::controlDoubleClicked(IBWControl& control) {
  if (isOwn(control)) {
    notifyDoubleClick();
  }
}

}  // namespace tesh::bramel
