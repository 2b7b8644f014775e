// MIDI messages on their way from the host's call to the block, without a lock.
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

/// Any thread may put messages, one at a time takes them. Never allocates after construction.
class MidiInbox {
 public:
  /// Messages of one block; beyond that the sender takes the lock, once.
  static constexpr std::size_t kRoom = 256;

  /// Returns false, and keeps nothing, for a message that may move a parameter, which has to stay in order with the
  /// parameters' writes; for one that is empty or longer than three bytes; if there is no room; and while another
  /// thread puts one.
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
