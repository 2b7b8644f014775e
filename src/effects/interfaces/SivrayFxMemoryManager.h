// The pool of delay memory that all effects with long lines share.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Two banks of the largest size that any user asks for. Every request takes the other bank than the last one did, so
/// that after a change of type the effect that fades in works in other memory than the one that fades out. After a
/// reset of all effects both can share a bank: then a user clears what it needs and leaves the rest of the other's
/// lines. Only memory that was written since it was last zero is cleared.
class SivrayFxMemoryManager : public SivrayFxMemoryAssigner {
 public:
  std::int16_t* acquire(SivrayFxMemoryUser& user) override;
  bool noteRun(const SivrayFxMemoryUser& user) override;
  void add(SivrayFxMemoryUser* user) override;

 private:
  struct Bank {
    std::size_t writtenFrom = 0;  ///< All samples before this one are zero, and all from `writtenEnd` on.
    std::size_t writtenEnd = 0;
    const SivrayFxMemoryUser* last = nullptr;  ///< Who got the bank or ran in it last.
  };

  platform::ZeroedArray<std::int16_t> pool;
  std::array<Bank, 2> banks;
  std::uint32_t turn = 0;  ///< The bank that was handed out last.
  std::size_t bankSamples = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
