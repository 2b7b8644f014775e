// One list, sorted by time, of everything that happens during a block. Rendering stops at each record, applies it, and
// continues with the next slice.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

#include "core/RealTime.h"
#include "core/RealTimeLock.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray {

/// What a record is. At one frame the kinds fire in this order.
enum class SequencerKind : std::uint32_t { parameter, midi, globalParameter };

/// The part of a MIDI message that the engine looks at.
struct SequencerMessage {
  std::array<std::uint8_t, 3> bytes{};
  std::uint32_t size = 0;  ///< 0 for no message; bytes past it are 0.
};

/// One change: a MIDI message or a parameter's new value.
struct SequencerEvent {
  std::int64_t frame = 0;      ///< Counted from the start of the block.
  std::uint32_t sequence = 0;  ///< Order of arrival.
  SequencerKind kind = SequencerKind::parameter;
  SequencerMessage message;  ///< Kind midi.
  std::uint32_t id = 0;      ///< Other kinds: a parameter's id.
  float value = 0.0F;        ///< Other kinds: 0 to 1 of the parameter's range.
};

/// Receives each record at its frame, on the audio thread.
class IEventResponder {
 public:
  virtual ~IEventResponder() = default;
  virtual void onParameter(const SequencerEvent& record) SIVRAY_NONBLOCKING = 0;
  virtual void onGlobalParameter(const SequencerEvent& record) SIVRAY_NONBLOCKING = 0;
  virtual void onMidi(const SequencerMessage& message) SIVRAY_NONBLOCKING = 0;
};

/// The render loop's view of the list. Audio thread.
class IEventSequencer {
 public:
  virtual ~IEventSequencer() = default;

  /// Returns the frames until the next record is due: 0 if it is due now, -1 if there is none.
  virtual std::int64_t nextEventFrame() SIVRAY_NONBLOCKING = 0;

  /// Must be called after each `frames` frames of rendering; fires every record that is due by then.
  virtual void advance(std::int64_t frames) SIVRAY_NONBLOCKING = 0;
};

/// Has room for far more records than most blocks bring.
using RecordList = std::vector<SequencerEvent, platform::PageAllocator<SequencerEvent>>;

/// Records that wait, at most kCapacity, more than one block can bring. A host that sets parameters and never renders
/// could fill any list, so a full list keeps only the newest value of each parameter at each frame: nothing is rendered
/// between records of the same frame, so the engine ends up with the same values. New records that still find no room
/// are dropped. Memory is allocated by the constructor alone.
class WaitingRecords {
 public:
  /// Room for 4095 values of automation and 4096 messages, the most that a block brings, behind a value of each of the
  /// engine's 560 parameter ids.
  static constexpr std::size_t kCapacity = 10240;

  WaitingRecords() { records.reserve(kCapacity); }

  bool isEmpty() const { return records.empty(); }

  /// Returns a new record for the caller to fill in, good until the next call. The record is lost if the list is full.
  SequencerEvent& add() SIVRAY_NONBLOCKING {
    if (records.size() == kCapacity && !makeRoom()) {
      return dropped;
    }
    // Within the capacity that the constructor has reserved.
    return cofu::core::vouchFor([this]() -> SequencerEvent& { return records.emplace_back(); });
  }

  /// Moves all records to the end of `list`, which has room for them.
  void moveTo(RecordList& list) SIVRAY_NONBLOCKING;

 private:
  bool makeRoom() SIVRAY_NONBLOCKING;

  RecordList records;
  bool isCrowded = false;  ///< Compaction freed too little; new records are dropped until `moveTo`.
  SequencerEvent dropped;  ///< What a producer fills in when there is no room.
};

/// What a block brings is added without a lock, by whoever runs the block. Other producers append on any thread, under
/// a lock that is never held while a record fires. The render loop takes over both once it has worked through its own
/// list.
class EventSequencer final : public IEventSequencer {
 public:
  static constexpr std::size_t kCapacity = WaitingRecords::kCapacity;

  /// `eventResponder` must outlive the sequencer.
  explicit EventSequencer(IEventResponder& eventResponder);

  /// As WaitingRecords::add. Must not run at the same time as another `add`, `nextEventFrame` or `advance`.
  SequencerEvent& add() SIVRAY_NONBLOCKING { return ofBlock.add(); }

  /// Appends one record. Any thread.
  void append(const SequencerEvent& record) SIVRAY_NONBLOCKING;

  std::int64_t nextEventFrame() SIVRAY_NONBLOCKING override;
  void advance(std::int64_t frames) SIVRAY_NONBLOCKING override;

 private:
  void merge();
  void fire(const SequencerEvent& record);

  WaitingRecords pending;               ///< Guarded by `mutex`.
  std::atomic<bool> hasPending{false};  ///< Set under the lock; read without it, so that an empty list costs no lock.
  WaitingRecords ofBlock;
  IEventResponder& responder;
  RecordList active;
  std::int64_t position = 0;  ///< Frames since the last merge.
  std::size_t cursor = 0;
  bool merged = false;
  std::mutex mutex;
};

}  // namespace tesh::bramel::plugin::sivray
