// Allocation of the sample memory. It comes from calloc, so the system provides each page when it is first written.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/PcmPool.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::size_t kSilentFrames = 2;  ///< Interpolation reads one frame past the position.

std::int16_t* zeroedSamples(std::size_t count) {
  void* block = std::calloc(count, sizeof(std::int16_t));
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return static_cast<std::int16_t*>(block);
}

}  // namespace

void PcmPool::Free::operator()(std::int16_t* block) const { std::free(block); }

PcmPool::PcmPool(std::size_t slotTotal, std::size_t framesPerSlot)
    : framesInSlot(std::clamp(framesPerSlot, std::size_t{2}, kMaxSlotFrames)),
      memory(zeroedSamples((slotTotal * framesInSlot + kSilentFrames) * 2)),
      slots(slotTotal) {
  for (PcmSlot& slot : slots) {
    slot.data = silence();
  }
}

}  // namespace tesh::bramel::plugin::sivray
