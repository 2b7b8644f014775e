// Swaps a slot's memory, and frees memory that is no longer used.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/PcmPool.h"

#include <algorithm>
#include <new>
#include <thread>
#include <utility>

namespace tesh::bramel::plugin::sivray {

PcmPool::PcmPool(std::size_t slotTotal, std::size_t framesPerSlot)
    : framesInSlot(std::clamp(framesPerSlot, std::size_t{2}, kMaxSlotFrames)),
      memory(SampleMemory::ofProcess()),
      store(WaveStore::ofProcess()),
      slots(slotTotal),
      pads(slotTotal) {
  for (PcmSlot& slot : slots) {
    slot.data = silence();
  }
  for (PadMemory& pad : pads) {
    pad.own = makeOwn().release();
  }
}

PcmPool::PadMemory::~PadMemory() {
  delete own;
  delete unplayed.load();
}

std::unique_ptr<OwnMemory> PcmPool::makeOwn() const {
  auto own = std::make_unique<OwnMemory>();
  own->area = SampleMemory::take(memory, framesInSlot);
  return own;
}

const std::int16_t* PcmPool::memoryOf(std::size_t index) const {
  const PadMemory& pad = pads[index];
  return pad.own != nullptr ? pad.own->area.samples() : pad.shared.samples();
}

/// The shared wave is freed by the next `freeUnused`, unless another is offered before.
OwnMemory& PcmPool::useOwn(std::size_t index) {
  PadMemory& pad = pads[index];
  if (pad.own != nullptr) {
    return *pad.own;
  }
  pad.own = pad.unplayed.exchange(nullptr, std::memory_order_acquire);
  SpareState expected = SpareState::useless;
  if (pad.state.compare_exchange_strong(expected, SpareState::busy, std::memory_order_acquire)) {
    pad.spare.swap(pad.shared);
    pad.state.store(SpareState::useless, std::memory_order_release);
  }
  return *pad.own;
}

void PcmPool::freeUnused() {
  for (PadMemory& pad : pads) {
    SpareState expected = SpareState::useless;
    if (pad.state.compare_exchange_strong(expected, SpareState::busy, std::memory_order_acquire)) {
      WaveStore::Share unused;
      unused.swap(pad.spare);
      pad.state.store(SpareState::useless, std::memory_order_release);
    }
    freeOwn(pad);
  }
}

/// Replaces memory that was written to and is not played by empty memory. Keeps it if the system has no more.
void PcmPool::freeOwn(PadMemory& pad) const {
  OwnMemory* written = pad.unplayed.load(std::memory_order_acquire);
  if (written == nullptr || written->writtenFrames == 0) {
    return;
  }
  std::unique_ptr<OwnMemory> empty;
  try {
    empty = makeOwn();
  } catch (const std::bad_alloc&) {
    return;
  }
  if (pad.unplayed.compare_exchange_strong(written, empty.get(), std::memory_order_acq_rel)) {
    static_cast<void>(empty.release());
    empty.reset(written);
  }
}

bool PcmPool::holdsSpare(std::size_t index, std::int32_t wave) const {
  const PadMemory& pad = pads[index];
  return pad.state.load(std::memory_order_acquire) == SpareState::offered && pad.spareWave == wave;
}

void PcmPool::offerSpare(std::size_t index, std::int32_t wave, WaveStore::Share samples) {
  PadMemory& pad = pads[index];
  while (pad.state.exchange(SpareState::busy, std::memory_order_acquire) == SpareState::busy) {
    std::this_thread::yield();
  }
  pad.spare.swap(samples);
  pad.spareWave = wave;
  pad.state.store(pad.spare ? SpareState::offered : SpareState::useless, std::memory_order_release);
}

bool PcmPool::takeSpare(std::size_t index, std::int32_t wave) {
  PadMemory& pad = pads[index];
  SpareState expected = SpareState::offered;
  if (!pad.state.compare_exchange_strong(expected, SpareState::busy, std::memory_order_acquire)) {
    return false;
  }
  if (pad.spareWave != wave) {
    pad.state.store(SpareState::offered, std::memory_order_release);
    return false;
  }
  pad.shared.swap(pad.spare);
  pad.state.store(SpareState::useless, std::memory_order_release);
  if (pad.own != nullptr) {
    pad.unplayed.store(std::exchange(pad.own, nullptr), std::memory_order_release);
  }
  slots[index].data = pad.shared.samples();
  slots[index].frames = pad.shared.frames();
  return true;
}

}  // namespace tesh::bramel::plugin::sivray
