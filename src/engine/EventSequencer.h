// Everything that happens during a block as one list of records in the order of time, so that rendering can run up to a
// record, apply it, and go on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "core/RealTime.h"
#include "core/RealTimeLock.h"

namespace tesh::bramel::plugin::sivray {

/// What a record is. At one frame the kinds fire in this order.
enum class SequencerKind : std::uint32_t { parameter, midi, globalParameter };

/// The part of a MIDI message that the engine looks at.
struct SequencerMessage {
  std::array<std::uint8_t, 3> bytes{};
  std::uint32_t size = 0;  ///< 0 for no message; bytes past it are 0.
};

struct SequencerEvent {
  std::int64_t frame = 0;      ///< Frame of the block.
  std::uint32_t sequence = 0;  ///< Order of arrival.
  SequencerKind kind = SequencerKind::parameter;
  SequencerMessage message;  ///< Kind midi.
  std::uint32_t id = 0;      ///< The other kinds: a parameter.
  float value = 0.0F;        ///< Normalised.
};

/// Receives records as they come due, on the audio thread.
class IEventResponder {
 public:
  virtual ~IEventResponder() = default;
  virtual void onParameter(const SequencerEvent& record) SIVRAY_NONBLOCKING = 0;
  virtual void onGlobalParameter(const SequencerEvent& record) SIVRAY_NONBLOCKING = 0;
  virtual void onMidi(const SequencerMessage& message) SIVRAY_NONBLOCKING = 0;
};

/// What the render loop asks.
class IEventSequencer {
 public:
  virtual ~IEventSequencer() = default;

  /// Frames until the next record is due, 0 when it is due now, -1 when there is none.
  virtual std::int64_t nextEventFrame() SIVRAY_NONBLOCKING = 0;

  /// Tells that `frames` frames have been rendered, and fires every record that has come due.
  virtual void advance(std::int64_t frames) SIVRAY_NONBLOCKING = 0;
};

/// Producers append on any thread; the render loop merges what has been appended when its own list has run out. The
/// lock is held for the appends of one producer or for one swap, never while anything fires. Nothing is allocated until
/// more than kReservedRecords wait at once.
class EventSequencer final : public IEventSequencer {
 public:
  static constexpr std::size_t kReservedRecords = 8192;

  /// Appends any number of records under one hold of the lock, which lasts as long as the intake.
  class Intake {
   public:
    explicit Intake(EventSequencer& sequencer) SIVRAY_NONBLOCKING : lock(sequencer.mutex), records(sequencer.pending) {}

    /// A new last record, to be filled in. Good until the next call.
    SequencerEvent& add() SIVRAY_NONBLOCKING {
      // Within the room that is reserved, but where a host sends more in a block or sets parameters without rendering.
      return cofu::core::mayWait([this]() -> SequencerEvent& { return records.emplace_back(); });
    }

   private:
    cofu::core::RealTimeLock<std::recursive_mutex> lock;
    std::vector<SequencerEvent>& records;
  };

  /// `eventResponder` must outlive the sequencer.
  explicit EventSequencer(IEventResponder& eventResponder);

  void append(const SequencerEvent& record) { Intake(*this).add() = record; }

  std::int64_t nextEventFrame() SIVRAY_NONBLOCKING override;
  void advance(std::int64_t frames) SIVRAY_NONBLOCKING override;

 private:
  void merge();
  void fire(const SequencerEvent& record);

  std::vector<SequencerEvent> pending;  ///< Guarded by `mutex`.
  IEventResponder& responder;
  std::vector<SequencerEvent> active;
  std::int64_t position = 0;  ///< Frames since the last merge.
  std::size_t cursor = 0;
  bool merged = false;
  std::recursive_mutex mutex;
};

}  // namespace tesh::bramel::plugin::sivray
