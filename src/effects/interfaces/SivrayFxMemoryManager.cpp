// How the two banks grow, take turns and are cleared.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/SivrayFxMemoryManager.h"

#include <algorithm>
#include <utility>

namespace tesh::bramel::plugin::sivray::effects {

std::int16_t* SivrayFxMemoryManager::acquire(SivrayFxMemoryUser& user) {
  turn = (turn - 1) & 1;
  std::int16_t* const area = pool.data() + turn * bankSamples;
  Bank& bank = banks[turn];
  const std::size_t required = user.requiredSamples();
  if (bank.writtenFrom < required) {
    std::fill(area + bank.writtenFrom, area + std::min(required, bank.writtenEnd), std::int16_t{0});
    bank.writtenFrom = std::min(required, bank.writtenEnd);
  }
  bank.last = &user;
  user.bank = turn;
  return area;
}

bool SivrayFxMemoryManager::noteRun(const SivrayFxMemoryUser& user) {
  Bank& bank = banks[user.bank];
  bank.writtenFrom = 0;
  bank.writtenEnd = std::max(bank.writtenEnd, user.requiredSamples());
  return std::exchange(bank.last, &user) == &user;
}

void SivrayFxMemoryManager::add(SivrayFxMemoryUser* user) {
  user->assigner = this;
  const std::size_t required = user->requiredSamples();
  if (required > bankSamples) {
    bankSamples = required;
    pool = platform::ZeroedArray<std::int16_t>(2 * bankSamples);
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
