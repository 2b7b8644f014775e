// The shell's reports on their way to JUCE's host.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_events/juce_events.h>

#include "core/LockFreeRing.h"
#include "core/RealTime.h"
#include "host/client/ClientParameter.h"
#include "host/shell/BramelInstrumentCallbacks.h"

namespace tesh::bramel::vst {

/// What the shell tells the host. `parameters` are those that the host sees, in its order, and outlive this object, as
/// the processor does.
class HostReports final : public BramelInstrumentHostCallback, private juce::Timer {
 public:
  HostReports(juce::AudioProcessor& processor, std::vector<ClientParameter*> shownParameters);

  void beginEdit(std::uint64_t visibleIndex) override;
  void endEdit(std::uint64_t visibleIndex) override;
  void automate(std::uint64_t visibleIndex, float value) override;

  /// Keeps the message for the next block, which takes it to the host; drops it when 511 wait. Any thread.
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) override;
  /// The message thread then tells the host that the program has changed, and the host reads all values again: after 1
  /// ms if the program was chosen on the panel, after kSettling if the host chose it. Ardour chooses a song's program
  /// first and sets its state afterwards; values that it read in between it would send back as edits of the state.
  void programChanged(Origin origin) override;
  /// Who has chosen the latest program. Any thread.
  Origin latestOrigin() const { return programOrigin; }
  /// The host sets a state, and reads the values by itself: a program change that waits is not told.
  void stateComes() { isProgramWaiting = false; }
  /// The host has changed a pad's sound parameter in its own window: after kSettling, when a block has applied the
  /// value, the message thread tells the host that texts of parameters have changed. Not on the audio thread.
  void soundMoved();
  void parametersChanged() override {}
  void keyStateChanged(int /*note*/) override {}
  void soundChanged() override { haveNamesChanged = true; }

  /// Whether the name of a key may have changed since the last call. Audio thread.
  bool takeNamesChanged() SIVRAY_NONBLOCKING {
    return haveNamesChanged.load(std::memory_order_relaxed) && haveNamesChanged.exchange(false);
  }

  /// Appends the waiting messages to `midi`, as many as fit into the wrappers' reserved memory, with frames below
  /// `frames`. Audio thread.
  void takeMidi(juce::MidiBuffer& midi, int frames) SIVRAY_NONBLOCKING;

 private:
  struct Message {
    std::array<std::uint8_t, 3> bytes{};
    std::int32_t frame = 0;
  };
  static constexpr std::size_t kMessages = 512;
  static constexpr int kSettling = 100;  ///< Milliseconds.

  void timerCallback() override;
  bool isLv2() const { return processor.wrapperType == juce::AudioProcessor::wrapperType_LV2; }
  /// Makes an LV2 host mark its song as changed, which it does not do for values that the plug-in reports. Hosts of
  /// other forms do.
  void markSong();
  ClientParameter* at(std::uint64_t visibleIndex) const;

  juce::AudioProcessor& processor;
  const std::vector<ClientParameter*> parameters;
  std::atomic<bool> isProgramWaiting = false;  ///< Told by the timer, like the next one.
  std::atomic<bool> areTextsWaiting = false;
  std::atomic<bool> haveNamesChanged = false;
  std::atomic<Origin> programOrigin = Origin::host;
  std::mutex sendersMutex;  ///< Lets senders put one message at a time.
  vimo::LockFreeRing<Message> messages{kMessages};
};

}  // namespace tesh::bramel::vst
