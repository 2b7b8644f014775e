// The ring buffer through which one thread passes records to another without a lock. Automation, movements of macros,
// commands and program changes each have one.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/ZeroedPages.h"

namespace tesh::vimo {

/// A ring of `capacity` entries that holds up to capacity - 1 records, for one writer and one reader at a time. `put`
/// and `take` are safe on the audio thread only if a Record copies without allocating; therefore they are not marked
/// for it.
template <typename Record>
class LockFreeRing {
 public:
  /// Allocates room for all entries; nothing is allocated afterwards. A capacity below 2 holds no record.
  explicit LockFreeRing(std::size_t capacity) : entries(capacity < 1 ? 1 : capacity) {}

  /// Appends a record. Returns false, and drops the record, if the ring is full. Writer only.
  bool put(Record record) {
    std::size_t current = writeIndex.load(std::memory_order_relaxed);
    const std::size_t next = following(current);
    if (next == readIndex.load(std::memory_order_acquire)) {
      return false;
    }
    entries.data()[next] = std::move(record);
    return writeIndex.compare_exchange_strong(current, next, std::memory_order_release, std::memory_order_relaxed);
  }

  /// The oldest record, which stays in the ring; null if the ring is empty. Reader only.
  const Record* peek() const {
    const std::size_t current = readIndex.load(std::memory_order_relaxed);
    return current == writeIndex.load(std::memory_order_acquire) ? nullptr : &entries.data()[following(current)];
  }

  /// Removes and returns the oldest record; nothing if the ring is empty. Reader only.
  std::optional<Record> take() {
    std::size_t current = readIndex.load(std::memory_order_relaxed);
    if (current == writeIndex.load(std::memory_order_acquire)) {
      return std::nullopt;
    }
    const std::size_t next = following(current);
    std::optional<Record> record(entries.data()[next]);
    readIndex.compare_exchange_strong(current, next, std::memory_order_release, std::memory_order_relaxed);
    return record;
  }

  bool isEmpty() const { return peek() == nullptr; }
  std::size_t capacity() const { return entries.size(); }

 private:
  std::size_t following(std::size_t index) const { return index + 1 == entries.size() ? 0 : index + 1; }

  /// For plain records, memory that was never written to takes no pages.
  using Entries = std::conditional_t<std::is_trivially_copyable_v<Record>, bramel::platform::ZeroedArray<Record>,
                                     std::vector<Record>>;

  Entries entries;
  std::atomic<std::size_t> writeIndex{0};
  std::atomic<std::size_t> readIndex{0};
};

/// A value and the frame at which it takes effect: an engine parameter on its way to the generator, or a macro's
/// movement on its way to the editor.
struct TimedValue {
  std::uint32_t id = 0;  ///< Number of the engine parameter or of the macro.
  float value = 0.0F;
  std::uint32_t frame = 0;   ///< From the start of the block, at the engine's rate.
  std::uint64_t object = 0;  ///< 0 for a plain value.
};

using TimedValueRing = LockFreeRing<TimedValue>;

}  // namespace tesh::vimo
