// Reads and writes values through the shell; makes texts with the instrument's formatters.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/ClientParameter.h"

#include <algorithm>
#include <utility>

#include "viewmodels/texts/SivrayTooltipProvider.h"
#include "viewmodels/texts/ValueOfText.h"

namespace tesh::bramel::vst {
namespace {

/// A parameter of up to 40 values, such as the effect type, is discrete: hosts show it as a list. A longer range keeps
/// a slider.
constexpr int kMostListed = 40;

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
  return tooltip::valueOfText(id, text.toStdString()).value_or(getValue());
}

}  // namespace tesh::bramel::vst
