// The sample memory of all pads, made once: one slot of fixed length per pad, which every wave change rewrites in
// place.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tesh::bramel::plugin::sivray {

/// What a pad has to play: interleaved stereo frames, followed in memory by at least two silent ones.
struct PcmSlot {
  bool ready = false;
  const std::int16_t* data = nullptr;
  std::uint64_t frames = 0;
  std::uint64_t writtenFrames = 0;  ///< frames of the slot's memory that may hold something else than zero
};

class PcmPool {
 public:
  /// Positions with twelve fraction bits stay within 32 bits up to this many frames.
  static constexpr std::size_t kMaxSlotFrames = (std::size_t{1} << 19) - 1;

  /// Memory for `slotTotal` slots of `framesPerSlot` stereo frames, at least 2 and at most kMaxSlotFrames each. The
  /// memory is zero, and no page of it is touched before its first use.
  PcmPool(std::size_t slotTotal, std::size_t framesPerSlot);

  std::size_t slotCount() const { return slots.size(); }
  std::size_t slotFrames() const { return framesInSlot; }

  /// The slot of pad `index`, which must be below slotCount().
  PcmSlot& slot(std::size_t index) { return slots[index]; }
  const PcmSlot& slot(std::size_t index) const { return slots[index]; }

  /// Where the memory of slot `index` begins.
  std::int16_t* memoryOf(std::size_t index) { return memory.get() + index * framesInSlot * 2; }

  /// The start of all sample memory, which the silent block is part of.
  const std::int16_t* base() const { return memory.get(); }

  /// Where `frame`, a place in the sample memory, lies: counted in frames from base().
  std::int32_t frameOf(const std::int16_t* frame) const { return static_cast<std::int32_t>((frame - base()) / 2); }

  /// Two silent frames, where an empty slot points.
  const std::int16_t* silence() const { return memory.get() + slots.size() * framesInSlot * 2; }

 private:
  struct Free {
    void operator()(std::int16_t* block) const;
  };

  std::size_t framesInSlot;
  std::unique_ptr<std::int16_t[], Free> memory;
  std::vector<PcmSlot> slots;
};

}  // namespace tesh::bramel::plugin::sivray
