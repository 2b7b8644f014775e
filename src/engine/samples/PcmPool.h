// The sample memory of all pads. A pad plays a shared wave, of which all instances use one copy, or it reads a wave
// into its own memory. Another thread may offer the pad its next shared wave; changing to that wave swaps the two.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/RealTime.h"
#include "engine/samples/SampleMemory.h"
#include "engine/samples/WaveStore.h"

namespace tesh::bramel::plugin::sivray {

/// The wave of a pad: interleaved stereo frames, followed in memory by at least two silent ones.
struct PcmSlot {
  bool ready = false;                  ///< False while a wave is being read.
  const std::int16_t* data = nullptr;  ///< The slot's memory, or the silent frames.
  std::uint64_t frames = 0;            ///< Length of the wave.
};

/// Memory that belongs to one pad.
struct OwnMemory {
  SampleMemory::Area area;
  std::atomic<std::size_t> writtenFrames{0};  ///< Frames that may not be zero.
};

/// The thread that changes a wave writes the slots; voices read them without a lock. A slot's "memory" is the
/// `slotFrames` frames that voices may read now. Only `takeSpare` and `useOwn` change it. Memory that a slot no longer
/// has may be freed at any time.
class PcmPool {
 public:
  /// The longest slot in which a Q12 position fits 32 bits.
  static constexpr std::size_t kMaxSlotFrames = (std::size_t{1} << 19) - 1;

  /// Makes `slotTotal` slots of `framesPerSlot` stereo frames each (limited to 2 .. kMaxSlotFrames), all zero. Throws
  /// std::bad_alloc.
  PcmPool(std::size_t slotTotal, std::size_t framesPerSlot);

  std::size_t slotCount() const { return slots.size(); }
  std::size_t slotFrames() const { return framesInSlot; }

  /// The slot of pad `index`, which must be below slotCount().
  PcmSlot& slot(std::size_t index) { return slots[index]; }
  const PcmSlot& slot(std::size_t index) const { return slots[index]; }

  /// The first sample of the memory of slot `index`.
  const std::int16_t* memoryOf(std::size_t index) const SIVRAY_NONBLOCKING;

  /// Makes the slot play its own memory, with its previous content. On the thread that changes a wave; waits for
  /// nobody.
  OwnMemory& useOwn(std::size_t index) SIVRAY_NONBLOCKING;

  // The spare wave of slot `index`. One thread at a time offers it, never the audio thread.

  /// Frees memory that slots no longer have.
  void freeUnused();
  /// Whether the slot has been offered this wave.
  bool holdsSpare(std::size_t index, std::int32_t wave) const;
  /// Offers the slot a wave instead of the last offer; an empty share only withdraws that. May wait for the end of a
  /// `takeSpare`.
  void offerSpare(std::size_t index, std::int32_t wave, WaveStore::Share samples);

  /// Makes the offered wave the slot's. Returns false, and changes nothing, if `wave` is not the offered one. On the
  /// thread that changes a wave; waits for nobody.
  bool takeSpare(std::size_t index, std::int32_t wave) SIVRAY_NONBLOCKING;

  /// Frame number 0.
  const std::int16_t* base() const { return memory->base(); }

  /// The frame number of `frame`, counted from base().
  std::int32_t frameOf(const std::int16_t* frame) const { return static_cast<std::int32_t>((frame - base()) / 2); }

  /// Two silent frames, to which an empty slot points.
  const std::int16_t* silence() const { return memory->silence(); }

  const std::shared_ptr<WaveStore>& waveStore() const { return store; }

 private:
  /// State of a pad's spare wave. `busy` works as a lock: only the thread that set it may access `spare` and
  /// `spareWave`, until it sets another state.
  enum class SpareState : std::uint8_t { useless, busy, offered };

  class PadMemory {
   public:
    PadMemory() = default;
    PadMemory(const PadMemory&) = delete;
    PadMemory& operator=(const PadMemory&) = delete;
    ~PadMemory();

    // Used by the thread that changes a wave:
    WaveStore::Share shared;   ///< Played if `own` is null.
    OwnMemory* own = nullptr;  ///< Played if not null.

    /// The pad's own memory while it is not played, never null then; null while it is played.
    std::atomic<OwnMemory*> unplayed{nullptr};

    std::atomic<SpareState> state{SpareState::useless};
    WaveStore::Share spare;
    std::int32_t spareWave = 0;
  };

  std::unique_ptr<OwnMemory> makeOwn() const;
  void freeOwn(PadMemory& pad) const;

  std::size_t framesInSlot;
  std::shared_ptr<SampleMemory> memory;
  std::shared_ptr<WaveStore> store;
  std::vector<PcmSlot> slots;
  std::vector<PadMemory> pads;
};

}  // namespace tesh::bramel::plugin::sivray
