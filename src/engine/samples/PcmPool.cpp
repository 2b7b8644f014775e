// Allocation of the sample memory, and the exchange of a slot's memory with its spare one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/PcmPool.h"

#include <algorithm>
#include <numeric>
#include <thread>

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::size_t kSilentFrames = 2;  ///< Interpolation reads one frame past the position.

}  // namespace

PcmPool::PcmPool(std::size_t slotTotal, std::size_t framesPerSlot)
    : framesInSlot(std::clamp(framesPerSlot, std::size_t{2}, kMaxSlotFrames)),
      memory((2 * slotTotal * framesInSlot + kSilentFrames) * 2),
      slots(slotTotal),
      slotAreas(slotTotal),
      presentFrames(2 * slotTotal),
      spares(slotTotal) {
  std::iota(slotAreas.begin(), slotAreas.end(), std::size_t{0});
  for (std::size_t index = 0; index < slotTotal; ++index) {
    slots[index].data = silence();
    spares[index].area = slotTotal + index;
  }
}

void PcmPool::provide(std::size_t area, std::size_t frames) {
  std::size_t& present = presentFrames[area];
  if (frames > present) {
    memory.makePresent((area * framesInSlot + present) * 2, (std::min(frames, framesInSlot) - present) * 2);
    present = std::min(frames, framesInSlot);
  }
}

void PcmPool::clearUselessSpares() {
  for (Spare& spare : spares) {
    SpareState expected = SpareState::useless;
    if (spare.state.compare_exchange_strong(expected, SpareState::busy, std::memory_order_acquire)) {
      presentFrames[spare.area] = 0;
      memory.clear(spare.area * framesInSlot * 2, std::exchange(spare.writtenFrames, 0) * 2);
      spare.state.store(SpareState::useless, std::memory_order_release);
    }
  }
}

bool PcmPool::holdsSpare(std::size_t index, std::int32_t wave) const {
  const Spare& spare = spares[index];
  return spare.state.load(std::memory_order_acquire) == SpareState::filled && spare.wave == wave;
}

std::pair<std::int16_t*, std::size_t> PcmPool::claimSpare(std::size_t index) {
  Spare& spare = spares[index];
  while (spare.state.exchange(SpareState::busy, std::memory_order_acquire) == SpareState::busy) {
    std::this_thread::yield();
  }
  return {areaAt(spare.area), spare.writtenFrames};
}

void PcmPool::offerSpare(std::size_t index, std::int32_t wave, std::size_t frames) {
  Spare& spare = spares[index];
  spare.wave = wave;
  spare.frames = frames;
  spare.writtenFrames = frames != 0 ? frames : spare.writtenFrames;
  spare.state.store(frames != 0 ? SpareState::filled : SpareState::useless, std::memory_order_release);
}

bool PcmPool::takeSpare(std::size_t index, std::int32_t wave) {
  Spare& spare = spares[index];
  SpareState expected = SpareState::filled;
  if (!spare.state.compare_exchange_strong(expected, SpareState::busy, std::memory_order_acquire)) {
    return false;
  }
  if (spare.wave != wave) {
    spare.state.store(SpareState::filled, std::memory_order_release);
    return false;
  }
  PcmSlot& slot = slots[index];
  std::swap(slotAreas[index], spare.area);
  std::swap(slot.writtenFrames, spare.writtenFrames);
  slot.data = memoryOf(index);
  slot.frames = spare.frames;
  spare.state.store(SpareState::useless, std::memory_order_release);
  return true;
}

}  // namespace tesh::bramel::plugin::sivray
