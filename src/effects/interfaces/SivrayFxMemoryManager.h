// The pool of delay memory that all effects with long lines share.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Two banks of the largest size that any user asks for. Every request takes the other bank than the last one did, so
/// that after a change of type the effect that fades in works in other memory than the one that fades out. After a
/// reset of all effects both can share a bank: then a user clears what it needs and leaves the rest of the other's
/// lines. Only pages that were written since they were last zero are cleared.
class SivrayFxMemoryManager : public SivrayFxMemoryAssigner {
 public:
  std::int16_t* acquire(SivrayFxMemoryUser& user) override;
  bool noteWrites(const SivrayFxMemoryUser& user, std::size_t from, std::size_t count) override;
  void add(SivrayFxMemoryUser* user) override;

 private:
  /// 4 KiB, as the system provides memory: clearing what was never written would make it provide the page.
  static constexpr std::size_t kPageSamples = 2048;

  struct Bank {
    std::vector<std::uint8_t> isWritten;       ///< By page; all samples of other pages are zero.
    const SivrayFxMemoryUser* last = nullptr;  ///< Who got the bank or wrote to it last.
    std::size_t notedFrom = 0;                 ///< Part of each line of `last` whose pages are known as written.
    std::size_t notedEnd = 0;

    void note(std::size_t from, std::size_t end);
  };

  void clear(std::size_t bank, std::size_t samples) SIVRAY_NONBLOCKING;

  platform::ZeroedArray<std::int16_t> pool;
  std::array<Bank, 2> banks;
  std::uint32_t turn = 0;  ///< The bank that was handed out last.
  std::size_t bankSamples = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
