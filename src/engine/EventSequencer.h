// A list, sorted by time, of everything that happens during a block. Rendering stops at each record, applies it, and
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

/// The bytes of a MIDI message that the engine uses.
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

/// Has room for far more records than most blocks need.
using RecordList = std::vector<SequencerEvent, platform::PageAllocator<SequencerEvent>>;

/// Waiting records, at most kCapacity, which is more than one block can bring. A host that sets parameters but never
/// renders could fill any list. A full list therefore keeps only the newest value of each parameter at each frame: the
/// engine ends up with the same values, because nothing is rendered between records of one frame. Further records that
/// find no room are dropped. Only the constructor allocates.
class WaitingRecords {
 public:
  /// Room for 4095 values of automation and 4096 messages, the most in one block, and one value of each of the engine's
  /// 560 parameter ids.
  static constexpr std::size_t kCapacity = 10240;

  WaitingRecords() { records.reserve(kCapacity); }

  bool isEmpty() const { return records.empty(); }

  /// Returns a new record, to be filled in before the next call. If the list is full, the record is dropped.
  SequencerEvent& add() SIVRAY_NONBLOCKING {
    if (records.size() == kCapacity && !makeRoom()) {
      return dropped;
    }
    // Within the capacity that the constructor reserved.
    return cofu::core::vouchFor([this]() -> SequencerEvent& { return records.emplace_back(); });
  }

  /// Moves all records to the end of `list`, which has room for them.
  void moveTo(RecordList& list) SIVRAY_NONBLOCKING;

 private:
  bool makeRoom() SIVRAY_NONBLOCKING;

  RecordList records;
  bool isCrowded = false;  ///< `makeRoom` freed too little: new records are dropped until `moveTo`.
  SequencerEvent dropped;  ///< Returned for filling in when there is no room.
};

/// The thread that runs a block adds the block's records without a lock. Other threads append theirs under a lock that
/// is never held while a record fires. When the render loop has finished its own list, it takes over both.
class EventSequencer final : public IEventSequencer {
 public:
  static constexpr std::size_t kCapacity = WaitingRecords::kCapacity;

  /// `eventResponder` must outlive the sequencer.
  explicit EventSequencer(IEventResponder& eventResponder);

  /// Like WaitingRecords::add. Must not run during another `add`, `nextEventFrame` or `advance`.
  SequencerEvent& add() SIVRAY_NONBLOCKING { return ofBlock.add(); }

  /// Appends one record. Any thread.
  void append(const SequencerEvent& record) SIVRAY_NONBLOCKING;

  std::int64_t nextEventFrame() SIVRAY_NONBLOCKING override;
  void advance(std::int64_t frames) SIVRAY_NONBLOCKING override;

 private:
  void merge();
  void fire(const SequencerEvent& record);

  WaitingRecords pending;               ///< Guarded by `mutex`.
  std::atomic<bool> hasPending{false};  ///< Set under the lock, read without it: an empty list costs no lock.
  WaitingRecords ofBlock;
  IEventResponder& responder;
  RecordList active;
  std::int64_t position = 0;  ///< Frames since the last merge.
  std::size_t cursor = 0;
  bool merged = false;
  std::mutex mutex;
};

}  // namespace tesh::bramel::plugin::sivray
