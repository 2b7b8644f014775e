// How the two banks grow and take turns.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/SivrayFxMemoryManager.h"

namespace tesh::bramel::plugin::sivray::effects {

std::int16_t* SivrayFxMemoryManager::acquire() {
  bank = (bank - 1) & 1;
  return pool.data() + bank * bankSamples;
}

void SivrayFxMemoryManager::add(SivrayFxMemoryUser* user) {
  user->assigner = this;
  const std::size_t required = user->requiredSamples();
  if (required > bankSamples) {
    bankSamples = required;
    pool.assign(2 * bankSamples, 0);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
