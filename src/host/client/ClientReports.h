// The shell's reports on their way to JUCE's host and to the parameters' values.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_events/juce_events.h>

#include "core/LockFreeRing.h"
#include "core/RealTime.h"
#include "host/client/ClientParameter.h"
#include "host/client/HostEchoes.h"
#include "host/shell/BramelInstrumentCallbacks.h"

namespace tesh::bramel::vst {

/// What the shell tells the host. `parameters` are those that the host sees, in its order, and outlive this object.
class HostReports final : public BramelInstrumentHostCallback, private juce::Timer {
 public:
  HostReports(std::vector<ClientParameter*> shownParameters, std::shared_ptr<HostEchoes> hostEchoes);

  void beginEdit(std::uint64_t visibleIndex) override;
  void endEdit(std::uint64_t visibleIndex) override;
  void automate(std::uint64_t visibleIndex, float value) override;

  /// Keeps the message for the next block, which takes it to the host; drops it when 511 wait. Any thread.
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) override;
  /// Tells the host all values, at once or, after `holdValues`, a little later.
  void parametersChanged() override;
  void programChanged(Origin /*origin*/) override {}
  void keyStateChanged(int /*note*/) override {}

  /// For as long as the host itself chooses a program: values wait for kSettling. A host that restores a song may
  /// choose the song's program first and its state then, and would send what it hears in between back as edits of the
  /// state.
  void holdValues(bool areHeld) { areValuesHeld = areHeld; }

  /// A state has come: the host asks for the values itself.
  void dropHeldValues() {
    stopTimer();
    echoes->allKnown();
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

  void tellValues();
  void timerCallback() override;
  ClientParameter* at(std::uint64_t visibleIndex) const;

  const std::vector<ClientParameter*> parameters;
  const std::shared_ptr<HostEchoes> echoes;
  std::mutex sendersMutex;  ///< Lets senders put one message at a time.
  vimo::LockFreeRing<Message> messages{kMessages};
  std::atomic<bool> areValuesHeld = false;
};

/// Receives what the shell tells the editor: updates the parameters' values, those of a block together at its end, and
/// passes the reports on to the panel.
class EditorReports final : public BramelInstrumentUICallback {
 public:
  /// `parameterOfId` holds null for hidden parameters; what it points to outlives this object. `panel` is not null.
  EditorReports(std::shared_ptr<BramelInstrument> instrument, std::vector<ClientParameter*> parameterOfId,
                std::shared_ptr<BramelInstrumentUICallback> panel);

  void holdUpdates() SIVRAY_NONBLOCKING override;
  void releaseUpdates() SIVRAY_NONBLOCKING override;
  void programSaved(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) override;
  void programDeleted(const std::string& bankName, const std::uint64_t* programIds, std::uint64_t count) override;
  void programMoved(const std::string& bankName, std::uint64_t fromIndex, std::uint64_t toIndex) override;
  void programChanged() override;
  void parameterChanged(std::uint64_t parameterId) SIVRAY_NONBLOCKING override;
  void midiReceived(const std::uint8_t* data, std::size_t size) SIVRAY_NONBLOCKING override;

 private:
  void list(std::uint64_t parameterId) SIVRAY_NONBLOCKING;
  void takeValues() SIVRAY_NONBLOCKING;

  const std::shared_ptr<BramelInstrument> instrument;
  const std::vector<ClientParameter*> parameters;
  const std::shared_ptr<BramelInstrumentUICallback> panel;
  // With the shell's main lock held.
  std::vector<std::uint64_t> changed;  ///< The first `changedCount` have changed since the values were taken.
  std::vector<float> values;           ///< As long as `changed`.
  std::size_t changedCount = 0;
};

}  // namespace tesh::bramel::vst
