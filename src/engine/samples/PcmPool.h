// The sample memory of all pads, allocated once: a slot of fixed length per pad, which every wave change rewrites in
// place. The system provides each page when it is first written.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray {

/// The wave of a pad: interleaved stereo frames, followed in memory by at least two silent ones.
struct PcmSlot {
  bool ready = false;                  ///< False while a wave is being read.
  const std::int16_t* data = nullptr;  ///< The slot's memory, or the pool's silence.
  std::uint64_t frames = 0;            ///< Length of the wave.
  std::uint64_t writtenFrames = 0;     ///< Frames of the memory that may not be zero.
};

/// Slots are written by the thread that changes a wave, and read by voices without a lock.
class PcmPool {
 public:
  /// The longest slot in which a Q12 position fits 32 bits.
  static constexpr std::size_t kMaxSlotFrames = (std::size_t{1} << 19) - 1;

  /// Allocates `slotTotal` slots of `framesPerSlot` stereo frames each (limited to 2 .. kMaxSlotFrames), all zero.
  /// Throws std::bad_alloc.
  PcmPool(std::size_t slotTotal, std::size_t framesPerSlot);

  std::size_t slotCount() const { return slots.size(); }
  std::size_t slotFrames() const { return framesInSlot; }

  /// The slot of pad `index`, which must be below slotCount().
  PcmSlot& slot(std::size_t index) { return slots[index]; }
  const PcmSlot& slot(std::size_t index) const { return slots[index]; }

  /// The first sample of the memory of slot `index`.
  std::int16_t* memoryOf(std::size_t index) { return memory.data() + index * framesInSlot * 2; }

  /// Provides the memory of the first `frames` frames of slot `index`, see ZeroedPages. Any thread.
  void makePresent(std::size_t index, std::size_t frames) const {
    memory.makePresent(index * framesInSlot * 2, std::min(frames, framesInSlot) * 2);
  }

  /// The first sample of all memory, including the silent frames.
  const std::int16_t* base() const { return memory.data(); }

  /// The number of the frame at `frame`, counted from base().
  std::int32_t frameOf(const std::int16_t* frame) const { return static_cast<std::int32_t>((frame - base()) / 2); }

  /// Two silent frames, to which an empty slot points.
  const std::int16_t* silence() const { return memory.data() + slots.size() * framesInSlot * 2; }

 private:
  std::size_t framesInSlot;
  platform::ZeroedArray<std::int16_t> memory;
  std::vector<PcmSlot> slots;
};

}  // namespace tesh::bramel::plugin::sivray
