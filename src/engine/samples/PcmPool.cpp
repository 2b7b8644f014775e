// Allocation of the sample memory.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/PcmPool.h"

#include <algorithm>

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::size_t kSilentFrames = 2;  ///< Interpolation reads one frame past the position.

}  // namespace

PcmPool::PcmPool(std::size_t slotTotal, std::size_t framesPerSlot)
    : framesInSlot(std::clamp(framesPerSlot, std::size_t{2}, kMaxSlotFrames)),
      memory((slotTotal * framesInSlot + kSilentFrames) * 2),
      slots(slotTotal) {
  for (PcmSlot& slot : slots) {
    slot.data = silence();
  }
}

}  // namespace tesh::bramel::plugin::sivray
