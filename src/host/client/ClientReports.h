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
  /// The message thread tells the host that the program has changed, by which it reads all values again: soon if the
  /// panel chose, later if the host did. Ardour chooses a song's program and then sets its state, and sends what it has
  /// read in between back as edits of the state.
  void programChanged(Origin origin) override;
  /// Who has chosen the latest program. Any thread.
  Origin latestOrigin() const { return programOrigin; }
  /// A state comes: the host reads the values by itself.
  void stateComes() { isProgramWaiting = false; }
  /// The host has chosen a pad's sound in its window: the message thread tells it soon that its parameters have other
  /// texts. By then the block has the value. Not on the audio thread.
  void soundMoved();
  void parametersChanged() override {}
  void keyStateChanged(int /*note*/) override {}
  void soundChanged() override { haveNamesChanged = true; }

  /// True once after a key may have another name. Audio thread.
  bool takeNamesChanged() SIVRAY_NONBLOCKING {
    return haveNamesChanged.load(std::memory_order_relaxed) && haveNamesChanged.exchange(false);
  }

  /// Appends the messages that wait to `midi`, as many as fit into what wrappers reserve, with frames below `frames`.
  /// Audio thread.
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
  /// Has an LV2 host mark its song as changed. It does not for values that the plug-in tells it; other hosts do.
  void markSong();
  ClientParameter* at(std::uint64_t visibleIndex) const;

  juce::AudioProcessor& processor;
  const std::vector<ClientParameter*> parameters;
  std::atomic<bool> isProgramWaiting = false;  ///< The timer's to tell, as the next one.
  std::atomic<bool> areTextsWaiting = false;
  std::atomic<bool> haveNamesChanged = false;
  std::atomic<Origin> programOrigin = Origin::host;
  std::mutex sendersMutex;  ///< Lets senders put one message at a time.
  vimo::LockFreeRing<Message> messages{kMessages};
};

}  // namespace tesh::bramel::vst
