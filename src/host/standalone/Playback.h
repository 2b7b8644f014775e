// The sound device's callback: plays the instrument by keys, MIDI devices and the demo.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_audio_devices/juce_audio_devices.h>
#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>
#include <cstdint>
#include <mutex>

#include "core/NoteMap.h"
#include "host/standalone/DemoPlayer.h"

namespace tesh::bramel::standalone {

/// Accepts blocks of any size and devices of any number of channels. A device of one channel gets the mean of both;
/// channels beyond two stay silent, except outputs for pads and effect, see SoundDevice::moreOutputsOf. The processor
/// is prepared while a device runs.
class Playback final : public juce::AudioIODeviceCallback, public juce::MidiInputCallback, private juce::AudioPlayHead {
 public:
  /// `instrument` outlives this object. It has no inputs and two outputs, and more that can be turned on.
  Playback(juce::AudioProcessor& instrument, DemoScore score);
  ~Playback() override;

  /// Plays another instrument from the next block on. It must outlive this object or the next call. Once this returns,
  /// the previous instrument may be destroyed. Message thread.
  void setInstrument(juce::AudioProcessor& instrument);

  DemoPlayer& demo() { return demoPlayer; }

  /// Strikes or releases a pad. Message thread.
  void playNote(int note, bool isOn);

  /// The map for notes of the MIDI inputs; initially each note plays itself. Any thread.
  void setNoteMap(const cofu::core::NoteMap& map);

  /// The last note or controller of each kind since the previous call; -1 for none.
  struct Heard {
    int panelNote = -1;  ///< Struck on the panel or by `playNote`.
    int inputNote = -1;  ///< From a MIDI input, as the device sent it.
    int inputController = -1;
  };
  /// Any thread.
  Heard takeHeard();

  /// Plays half a second of 440 Hz, mixed in after the instrument. Any thread.
  void playTestTone();

  /// The number of the device's blocks so far. Any thread.
  std::uint64_t blockCount() const { return blocks; }

  // The device's side.

  void audioDeviceAboutToStart(juce::AudioIODevice* device) override;
  void audioDeviceStopped() override;
  void audioDeviceIOCallbackWithContext(const float* const* inputs, int inputCount, float* const* outputs,
                                        int outputCount, int frames,
                                        const juce::AudioIODeviceCallbackContext& context) override;
  void handleIncomingMidiMessage(juce::MidiInput* source, const juce::MidiMessage& message) override;

  /// Prepares without a device: rate in Hz, longest block in frames, and the number of outputs for pads and effect.
  void prepare(double rate, int frames, int moreOutputs = 0);

 private:
  juce::Optional<PositionInfo> getPosition() const override;
  void prepareInstrument(juce::AudioProcessor& instrument) const;
  void render(int frames);
  void hearPanel();
  void addTestTone(int frames);
  void copyTo(float* const* outputs, int outputCount, int from, int frames) const;

  juce::AudioProcessor* processor;
  juce::SpinLock instrumentLock;  ///< Held while a block uses `processor`.
  DemoPlayer demoPlayer;
  std::mutex translatorMutex;  ///< The MIDI inputs' threads take it.
  cofu::core::NoteTranslator translator;
  std::atomic<int> panelNote = -1;
  std::atomic<int> inputNote = -1;
  std::atomic<int> inputController = -1;
  juce::MidiMessageCollector collector;
  juce::MidiBuffer live;    ///< For the device's whole block.
  juce::MidiBuffer events;  ///< For the part that is rendered.
  juce::AudioBuffer<float> sound;
  double sampleRate = 0.0;
  int longestBlock = 0;
  bool hasOuts = false;  ///< The device has outputs for pads and effect.
  std::atomic<std::uint64_t> blocks = 0;
  std::atomic<bool> isToneWanted = false;
  int toneFrame = 0;  ///< Position in the test tone; `toneFrames` while none sounds.
  int toneFrames = 0;
};

}  // namespace tesh::bramel::standalone
