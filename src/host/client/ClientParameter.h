// A parameter as JUCE's wrappers see it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

#include "core/RealTime.h"
#include "host/client/HostEchoes.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

/// Wrappers read values on the audio thread, even inside a block of their own, so that the value is kept here: the
/// shell would have to be locked. Values are normalised, 0 to 1. Any thread, unless it says otherwise.
class ClientParameter final : public juce::AudioProcessorParameterWithID {
 public:
  /// `id` is the shell's number of a macro, which never changes its meaning: hosts know the parameter by it.
  ClientParameter(std::shared_ptr<BramelInstrument> instrument, std::shared_ptr<HostEchoes> hostEchoes,
                  std::uint64_t id);

  std::uint64_t shellId() const { return id; }

  float getValue() const override { return value; }

  /// A write of the host. Ignores what `takes` refuses. Audio thread too.
  void setValue(float newValue) override;

  /// Whether a write of the host counts: its value is from 0 to 1, and the host does not only send back what it was
  /// told of an earlier program. Audio thread too.
  bool takes(float newValue) const SIVRAY_NONBLOCKING;

  /// The host is told the present value.
  void noteTold() { toldValue = value.load(); }

  /// Takes over a value that the shell has. Audio thread too.
  void keepValue(float shellValue) { value = shellValue; }

  float getDefaultValue() const override;
  int getNumSteps() const override { return steps; }
  /// True for few values, which hosts show as a list.
  bool isDiscrete() const override;

  // Texts. Not on the audio thread.

  juce::String getText(float ofValue, int maximumLength) const override;
  /// The value that has this text, or the number nearest to it in the text; the present value if there is none.
  float getValueForText(const juce::String& text) const override;

 private:
  const std::shared_ptr<BramelInstrument> instrument;
  const std::uint64_t id;
  const int steps;
  std::atomic<float> value;
  std::atomic<float> toldValue;  ///< What the host was told last.
  const std::shared_ptr<HostEchoes> echoes;
};

}  // namespace tesh::bramel::vst
