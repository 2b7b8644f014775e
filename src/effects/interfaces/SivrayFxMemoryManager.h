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

/// Two banks of the largest size that any user needs. Requests alternate between the banks, so that after a change of
/// type the effect that fades in uses other memory than the one that fades out. After a reset of all effects, two users
/// may have the same bank: a user then clears only its own lines in it. Only pages that have been written since they
/// were last cleared are cleared.
class SivrayFxMemoryManager : public SivrayFxMemoryAssigner {
 public:
  std::int16_t* acquire(SivrayFxMemoryUser& user) override;
  bool noteWrites(const SivrayFxMemoryUser& user, std::size_t from, std::size_t count) override;
  void add(SivrayFxMemoryUser* user) override;

 private:
  /// 4 KiB, the system's unit: clearing a page that was never written would make the system provide it.
  static constexpr std::size_t kPageSamples = 2048;

  struct Bank {
    std::vector<std::uint8_t> isWritten;       ///< By page; all samples of other pages are zero.
    const SivrayFxMemoryUser* last = nullptr;  ///< The user that acquired or wrote to the bank last.
    std::size_t notedFrom = 0;  ///< Start of the range in each line of `last` whose pages are marked as written.
    std::size_t notedEnd = 0;

    void note(std::size_t from, std::size_t end);
  };

  void clear(std::size_t bank, std::size_t samples) SIVRAY_NONBLOCKING;

  platform::ZeroedArray<std::int16_t> pool;
  std::array<Bank, 2> banks;
  std::uint32_t turn = 0;  ///< The bank that was acquired last.
  std::size_t bankSamples = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
