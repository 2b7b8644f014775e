// The two banks: how they grow, alternate and are cleared.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/interfaces/SivrayFxMemoryManager.h"

#include <algorithm>

namespace tesh::bramel::plugin::sivray::effects {

std::int16_t* SivrayFxMemoryManager::acquire(SivrayFxMemoryUser& user) {
  turn = (turn - 1) & 1;
  clear(turn, user.requiredSamples());
  banks[turn].last = &user;
  banks[turn].notedEnd = 0;
  user.bank = turn;
  return pool.data() + turn * bankSamples;
}

/// Zeroes the first `samples` of a bank. A page that also holds later samples stays marked as written.
void SivrayFxMemoryManager::clear(std::size_t bank, std::size_t samples) {
  std::int16_t* const area = pool.data() + bank * bankSamples;
  std::vector<std::uint8_t>& isWritten = banks[bank].isWritten;
  for (std::size_t page = 0; page * kPageSamples < samples; ++page) {
    if (isWritten[page] != 0) {
      const std::size_t first = page * kPageSamples;
      const std::size_t count = std::min(samples - first, kPageSamples);
      std::fill_n(area + first, count, std::int16_t{0});
      isWritten[page] = count < kPageSamples ? 1 : 0;
    }
  }
}

bool SivrayFxMemoryManager::noteWrites(const SivrayFxMemoryUser& user, std::size_t from, std::size_t count) {
  Bank& bank = banks[user.bank];
  const bool isLast = bank.last == &user;
  const std::size_t end = from + count;
  if (isLast && from >= bank.notedFrom && end <= bank.notedEnd) {
    return true;
  }
  bank.last = &user;
  // Rounded down to whole pages, so that the next blocks need not mark them again.
  bank.notedFrom = from - from % kPageSamples;
  bank.notedEnd = std::min((end + kPageSamples - 1) / kPageSamples * kPageSamples, user.lineLength);
  const std::size_t wrapped = end > user.lineLength ? std::min(end - user.lineLength, from) : 0;
  const std::size_t required = user.requiredSamples();
  for (std::size_t line = 0; line < required; line += user.lineLength) {
    bank.note(line + bank.notedFrom, line + bank.notedEnd);
    bank.note(line, line + wrapped);
  }
  return isLast;
}

void SivrayFxMemoryManager::Bank::note(std::size_t from, std::size_t end) {
  for (std::size_t page = from / kPageSamples; page * kPageSamples < end; ++page) {
    isWritten[page] = 1;
  }
}

void SivrayFxMemoryManager::add(SivrayFxMemoryUser* user) {
  user->assigner = this;
  const std::size_t required = user->requiredSamples();
  if (required > bankSamples) {
    bankSamples = required;
    pool = platform::ZeroedArray<std::int16_t>(2 * bankSamples);
    for (Bank& bank : banks) {
      bank.isWritten.assign((bankSamples + kPageSamples - 1) / kPageSamples, 0);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
