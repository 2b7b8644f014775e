// The sample memory of all pads, allocated once: a slot of fixed length per pad, which a wave change rewrites in place,
// and beside each a spare one. Another thread may fill the spare one ahead, and a wave change then takes it in
// exchange. The system provides each page when it is first written.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "core/RealTime.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray {

/// The wave of a pad: interleaved stereo frames, followed in memory by at least two silent ones.
struct PcmSlot {
  bool ready = false;                  ///< False while a wave is being read.
  const std::int16_t* data = nullptr;  ///< The slot's memory, or the pool's silence.
  std::uint64_t frames = 0;            ///< Length of the wave.
  std::size_t writtenFrames = 0;       ///< Frames of the memory that may not be zero.
};

/// Slots are written by the thread that changes a wave, and read by voices without a lock. "Memory" is what a slot has
/// now; it changes with `takeSpare` alone.
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
  std::int16_t* memoryOf(std::size_t index) { return areaAt(slotAreas[index]); }

  /// Provides the pages of the first `frames` frames of slot `index`, or of its spare memory, see ZeroedPages.
  void makePresent(std::size_t index, std::size_t frames) { provide(slotAreas[index], frames); }
  void makeSparePresent(std::size_t index, std::size_t frames) { provide(spares[index].area, frames); }

  // The spare memory of slot `index`. One thread at a time fills it, never the audio thread:

  /// Clears the spare memories that hold no wave for `takeSpare`, and gives their pages back to the system.
  void clearUselessSpares();
  /// Whether the spare memory holds a wave already.
  bool holdsSpare(std::size_t index, std::int32_t wave) const;
  /// Takes the spare memory away from `takeSpare`, and returns it with the number of its frames that may not be zero.
  /// May wait for the end of a `takeSpare`.
  std::pair<std::int16_t*, std::size_t> claimSpare(std::size_t index);
  /// Ends a claim: the memory now holds `frames` frames of the wave, then zeros. With 0 frames it holds no wave, and
  /// `takeSpare` refuses it.
  void offerSpare(std::size_t index, std::int32_t wave, std::size_t frames);

  /// Makes the spare memory the slot's memory, with the wave in it, and the other way round. Returns false, and changes
  /// nothing, if it does not hold this wave. On the thread that changes a wave; waits for nobody.
  bool takeSpare(std::size_t index, std::int32_t wave) SIVRAY_NONBLOCKING;

  /// The first sample of all memory, including the silent frames.
  const std::int16_t* base() const { return memory.data(); }

  /// The number of the frame at `frame`, counted from base().
  std::int32_t frameOf(const std::int16_t* frame) const { return static_cast<std::int32_t>((frame - base()) / 2); }

  /// Two silent frames, to which an empty slot points.
  const std::int16_t* silence() const { return areaAt(2 * slots.size()); }

 private:
  /// What a spare memory holds: no wave, or the wave that `Spare` names. `busy` is a lock: whoever sets it may alone
  /// touch the memory and the fields of `Spare`, until it sets another state.
  enum class SpareState : std::uint8_t { useless, busy, filled };

  struct Spare {
    std::atomic<SpareState> state{SpareState::useless};
    std::size_t area = 0;
    std::int32_t wave = 0;
    std::size_t frames = 0;
    std::size_t writtenFrames = 0;
  };

  std::int16_t* areaAt(std::size_t area) const { return memory.data() + area * framesInSlot * 2; }
  void provide(std::size_t area, std::size_t frames);

  std::size_t framesInSlot;
  platform::ZeroedArray<std::int16_t> memory;  ///< Twice as many areas as slots, then silent frames.
  std::vector<PcmSlot> slots;
  std::vector<std::size_t> slotAreas;
  std::vector<std::size_t> presentFrames;  ///< Of each area, whose pages need not be asked for again.
  std::vector<Spare> spares;
};

}  // namespace tesh::bramel::plugin::sivray
