// The instrument as JUCE's plug-in wrappers and the standalone program see it: each call becomes one on the shell, as
// the VST 2 adapter does for its hosts.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <juce_audio_processors/juce_audio_processors.h>

#include "core/RealTime.h"
#include "host/client/KeyNames.h"
#include "host/client/ProgramChoice.h"
#include "host/shell/BramelInstrument.h"

namespace tesh::bramel::vst {

class BramelInstrumentEditor;

/// Parameters are those that the VST 2 host sees, in the same order; host programs are the first factory bank; the
/// state is the same bytes as the VST 2 chunk. Ten stereo outputs, of which all but the main one are off at first; no
/// input. The same blocks give the same samples as VST 2. Where the instrument's files are missing, it is silent, has
/// no parameters and programs, and keeps a state for the host unread.
class SivrayProcessor final : public juce::AudioProcessor, public KeyNames, public ProgramChoice {
 public:
  /// Builds the instrument from its files; JUCE must be running. Throws nothing that a host could cause.
  SivrayProcessor();

  /// The editor must be gone. Not during a block.
  ~SivrayProcessor() override;

  /// Never null.
  const std::shared_ptr<BramelInstrument>& instrument() const;

  /// Null where the instrument's files are missing.
  const std::shared_ptr<BramelInstrumentEditor>& panel() const;

  /// A text for the user that names the missing files and, one per line, the folders where they were looked for; empty
  /// if nothing is missing.
  const std::string& fault() const;

  const juce::String getName() const override;

  // Audio.

  /// Sets the rate in Hz and drops old sound and messages. Ignores the longest block.
  void prepareToPlay(double sampleRate, int maximumExpectedSamplesPerBlock) override;
  void releaseResources() override;
  bool isBusesLayoutSupported(const BusesLayout& layouts) const override;

  /// Renders a block into the outs that are on, with the messages in `midi` and the play head's tempo, and replaces the
  /// messages in `midi` by those for the host. A block without channels only applies the writes and queues the
  /// messages. Audio thread.
  void processBlock(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;
  using juce::AudioProcessor::processBlock;
  /// As above, but silent: while a host has switched the plug-in off by its bypass.
  void processBlockBypassed(juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;
  using juce::AudioProcessor::processBlockBypassed;

  /// A write by the host; the next block applies it together with the others. Ignores an unknown index and a value
  /// outside 0 to 1. Audio thread, for wrappers that know that a block follows.
  void setParameter(int parameterIndex, float newValue) override;

  bool acceptsMidi() const override { return true; }
  bool producesMidi() const override { return true; }

  /// Infinite, so that no host cuts a delay with much feedback off.
  double getTailLengthSeconds() const override;

  // Programs of the first factory bank. Any thread but the audio thread.

  /// At least 1, as wrappers want it.
  int getNumPrograms() override;

  /// The selected program, or the one that was selected last while one of another bank is.
  int getCurrentProgram() override;

  /// Selects the program at once, also while no audio runs. Soon afterwards the message thread tells the host. Ignores
  /// an index out of range.
  void setCurrentProgram(int index) override;
  const juce::String getProgramName(int index) override;

  /// Factory programs keep their names.
  void changeProgramName(int /*index*/, const juce::String& /*newName*/) override {}

  bool isProgramOfPanel() const override;

  // The pads' sounds, as the names of their keys.

  std::string keyName(int key) const override;
  void hostMoved(int parameterIndex) override;
  bool takeNamesChanged() SIVRAY_NONBLOCKING override;

  // State. Any thread but the audio thread.

  void getStateInformation(juce::MemoryBlock& destination) override;
  /// Bytes that are no state change nothing.
  void setStateInformation(const void* data, int sizeInBytes) override;

  // The panel. Message thread.

  bool hasEditor() const override { return true; }
  juce::AudioProcessorEditor* createEditor() override;

 private:
  class Impl;

  static BusesProperties stereoOuts();
  void takePosition();
  void processOuts(juce::AudioBuffer<float>& buffer) SIVRAY_NONBLOCKING;

  std::unique_ptr<Impl> impl;
};

}  // namespace tesh::bramel::vst
