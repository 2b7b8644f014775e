// The shell's reports on their way to a CLAP host: values and gestures wait for the next block or flush, all else for
// the host's main thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>

#include "core/LockFreeRing.h"
#include "core/RealTime.h"
#include "host/clap/ClapHost.h"
#include "host/clap/ClapParameters.h"
#include "host/shell/BramelInstrumentCallbacks.h"

namespace tesh::bramel::clap {

/// Receives the shell's reports for the host. The message thread and, inside a block, the audio thread call it.
class ClapReports final : public vst::BramelInstrumentHostCallback {
 public:
  /// A report that waits for a block or a flush.
  struct Report {
    enum class Kind : std::uint8_t { value, gestureBegin, gestureEnd, midi };
    Kind kind = Kind::value;
    std::uint32_t index = 0;  ///< Of the parameter.
    float value = 0.0F;       ///< As the instrument has it.
    std::array<std::uint8_t, 3> message{};
  };

  /// All outlive this object.
  ClapReports(vst::BramelInstrument& instrument, const ClapParameters& parameters, const ClapHost& host);

  void beginEdit(std::uint64_t visibleIndex) override;
  void endEdit(std::uint64_t visibleIndex) override;
  void automate(std::uint64_t visibleIndex, float value) override;
  void sendMidi(const std::uint8_t* data, std::size_t size, std::int32_t deltaFrames) override;
  void parametersChanged() override;
  /// `parametersChanged` follows.
  void programChanged(vst::Origin origin) override;
  void keyStateChanged(int /*note*/) override {}

  /// The oldest report, if one waits. One thread at a time, which the interface guarantees. Audio thread too.
  std::optional<Report> take() SIVRAY_NONBLOCKING { return reports.take(); }

  /// Whether a kit or a state has brought values that no block has taken yet. Any thread.
  bool areValuesNew() const SIVRAY_NONBLOCKING { return haveValuesChanged.load(std::memory_order_relaxed); }
  /// As above, and marks them as taken. Audio thread.
  bool takeValuesChanged() SIVRAY_NONBLOCKING { return areValuesNew() && haveValuesChanged.exchange(false); }

  /// The host has loaded a state: its values and key names are reported as new, but the song is not marked as changed.
  /// Main thread.
  void stateLoaded();

  /// Whether the host runs blocks, which deliver MIDI messages. Messages from before would all come in the first block,
  /// so they are dropped. Main thread.
  void setTakesMidi(bool takes) { takesMidi = takes; }

  /// Only notes that the host is to be called later: called from here, it might wait for a lock that its own block
  /// holds.
  void soundChanged() SIVRAY_NONBLOCKING override {
    haveNamesChanged = true;
    isCallWanted = true;
  }

  /// Asks the host to call `onMainThread` if something waits for it. The host's code may wait. Audio thread too.
  void askForCall() SIVRAY_NONBLOCKING;

  /// Passes the waiting reports on to the host. Main thread.
  void onMainThread();

 private:
  void put(const Report& report);

  static constexpr std::size_t kReports = 1024;

  vst::BramelInstrument& instrument;
  const ClapParameters& parameters;
  const ClapHost& host;
  std::mutex writing;  ///< Held for a few stores.
  vimo::LockFreeRing<Report> reports{kReports};
  std::atomic<bool> haveValuesChanged = false;  ///< Taken by the block.
  std::atomic<bool> takesMidi = false;
  std::atomic<bool> isRescanWanted = false;  ///< Taken on the main thread, like the next ones.
  std::atomic<bool> isDirty = false;
  std::atomic<bool> isKitChosen = false;  ///< On the panel; the host's browser then shows that kit.
  std::atomic<bool> haveNamesChanged = false;
  std::atomic<bool> isCallWanted = false;
};

}  // namespace tesh::bramel::clap
