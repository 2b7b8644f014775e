// A lock-free queue of MIDI messages from the host's call to the block.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

#include "core/LockFreeRing.h"
#include "core/RealTime.h"
#include "host/shell/MidiIntake.h"

namespace tesh::bramel::vst {

/// Any thread may put messages; one thread at a time takes them. Never allocates after construction.
class MidiInbox {
 public:
  /// The most messages that fit. If there are more, the sender takes the main lock and empties the inbox.
  static constexpr std::size_t kRoom = 256;

  /// Returns false, and keeps nothing, for a message that may move a parameter (it must stay in order with the
  /// parameters' writes), that is empty, or that is longer than three bytes; also if the queue is full, or while
  /// another thread puts a message.
  bool put(std::span<const std::uint8_t> bytes, std::int32_t deltaFrames) SIVRAY_NONBLOCKING {
    if (bytes.empty() || bytes.size() > ShortMessage::kMostBytes || mayMoveParameter(bytes[0])) {
      return false;
    }
    if (hasWriter.test_and_set(std::memory_order_acquire)) {
      return false;
    }
    const bool isKept = ring.put({ShortMessage(bytes), deltaFrames});
    hasWriter.clear(std::memory_order_release);
    return isKept;
  }

  /// Calls `take(message, deltaFrames)` for each message, oldest first.
  template <typename Take>
  void takeAll(Take take) SIVRAY_NONBLOCKING {
    while (const auto entry = ring.take()) {
      take(entry->message, entry->deltaFrames);
    }
  }

 private:
  struct Entry {
    ShortMessage message;
    std::int32_t deltaFrames = 0;
  };

  vimo::LockFreeRing<Entry> ring{kRoom + 1};
  std::atomic_flag hasWriter;
};

}  // namespace tesh::bramel::vst
