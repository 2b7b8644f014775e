// How the two banks grow, take turns and are cleared.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/SivrayFxMemoryManager.h"

#include <algorithm>
#include <utility>

namespace tesh::bramel::plugin::sivray::effects {

std::int16_t* SivrayFxMemoryManager::acquire(SivrayFxMemoryUser& user) {
  noteWritten();
  bank = (bank - 1) & 1;
  std::int16_t* const area = pool.data() + bank * bankSamples;
  std::fill_n(area, std::exchange(writtenSamples[bank], 0), std::int16_t{0});
  user.bank = bank;
  return area;
}

/// An effect that runs on in an area that another one has got since tells so again with its next block.
void SivrayFxMemoryManager::noteWritten() {
  for (SivrayFxMemoryUser* const user : users) {
    if (std::exchange(user->hasWritten, false)) {
      writtenSamples[user->bank] = std::max(writtenSamples[user->bank], user->requiredSamples());
    }
  }
}

void SivrayFxMemoryManager::add(SivrayFxMemoryUser* user) {
  user->assigner = this;
  users.push_back(user);
  const std::size_t required = user->requiredSamples();
  if (required > bankSamples) {
    bankSamples = required;
    pool = platform::ZeroedArray<std::int16_t>(2 * bankSamples);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
