// A parameter as JUCE's wrappers see it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

#include "core/RealTime.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

/// Values are normalised, 0 to 1, and the shell has the only copy. Any thread, unless it says otherwise.
class ClientParameter final : public juce::AudioProcessorParameterWithID {
 public:
  /// `id` is the shell's number of a macro, which never changes its meaning: hosts know the parameter by it.
  ClientParameter(std::shared_ptr<BramelInstrument> instrument, std::uint64_t id);

  std::uint64_t shellId() const { return id; }

  /// The last value that was written, or that the last block set. Audio thread too.
  float getValue() const override { return instrument->latestValue(id); }

  /// A write of the host; one outside 0 to 1 is ignored. Audio thread too.
  void setValue(float newValue) override { instrument->setParameter(id, newValue); }

  float getDefaultValue() const override;
  int getNumSteps() const override { return steps; }
  /// True for a parameter of few values, which hosts show as a list.
  bool isDiscrete() const override;

  // Texts. Not on the audio thread.

  juce::String getText(float ofValue, int maximumLength) const override;
  /// The value that has this text, or the number nearest to it in the text; the present value if there is none.
  float getValueForText(const juce::String& text) const override;

 private:
  const std::shared_ptr<BramelInstrument> instrument;
  const std::uint64_t id;
  const int steps;
};

}  // namespace tesh::bramel::vst
