// Reads and writes values through the shell; makes texts with the instrument's formatters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/ClientParameter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace tesh::bramel::vst {
namespace {

/// Hosts offer the values of a discrete parameter as a list. This many at most, which takes in all whose texts are
/// words (the types of effect are most), and leaves numbers to a slider.
constexpr int kMostListed = 40;

/// Steps in which values are tried for a text: each of the up to 512 texts that a parameter has lies on some.
constexpr int kTried = 2000;

juce::String idOf(std::uint64_t macro) { return "macro" + juce::String(macro); }

int stepsOf(const BramelInstrument& instrument, std::uint64_t macro) {
  const std::uint64_t most = static_cast<std::uint64_t>(juce::AudioProcessor::getDefaultNumParameterSteps());
  return static_cast<int>(std::min(instrument.parameterSteps(macro), most));
}

}  // namespace

ClientParameter::ClientParameter(std::shared_ptr<BramelInstrument> ofInstrument, std::uint64_t macro)
    : AudioProcessorParameterWithID(juce::ParameterID(idOf(macro), 1),
                                    juce::String::fromUTF8(ofInstrument->parameterName(macro).c_str())),
      instrument(std::move(ofInstrument)),
      id(macro),
      steps(stepsOf(*instrument, macro)) {}

float ClientParameter::getDefaultValue() const { return instrument->parameterDefault(id); }

bool ClientParameter::isDiscrete() const { return steps <= kMostListed; }

juce::String ClientParameter::getText(float ofValue, int maximumLength) const {
  tooltip::SivrayTooltipProvider texts;
  texts.setValue(id, ofValue);
  const auto text = juce::String::fromUTF8(texts.getParameterText(id).c_str());
  return maximumLength > 0 ? text.substring(0, maximumLength) : text;
}

float ClientParameter::getValueForText(const juce::String& text) const {
  const juce::String wanted = text.trim();
  const double number = wanted.getDoubleValue();
  double nearest = wanted.containsAnyOf("0123456789") ? HUGE_VAL : 0.0;  // Distance of the text's number.
  int first = -1;                                                        // Of the row of steps that are nearest.
  int last = -1;
  for (int step = 0; step <= kTried; ++step) {
    const juce::String tried = getText(static_cast<float>(step) / static_cast<float>(kTried), 0);
    const double distance = tried.equalsIgnoreCase(wanted) ? -1.0 : std::fabs(tried.getDoubleValue() - number);
    if (distance < nearest) {
      nearest = distance;
      first = step;
    }
    last = distance == nearest ? step : last;
  }
  if (first < 0) {
    return getValue();
  }
  // The middle of the row, but the ends exactly.
  const int row = first == 0 ? 0 : last == kTried ? 2 * kTried : first + last;
  return static_cast<float>(row) / static_cast<float>(2 * kTried);
}

}  // namespace tesh::bramel::vst
