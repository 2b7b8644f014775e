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
/// that an effect that fades in and the one that fades out work in different memory. An area is cleared when it is
/// handed out, as far as effects have written to it since: what no effect runs in takes neither time nor memory.
class SivrayFxMemoryManager : public SivrayFxMemoryAssigner {
 public:
  std::int16_t* acquire(SivrayFxMemoryUser& user) override;
  void add(SivrayFxMemoryUser* user) override;

 private:
  void noteWritten() SIVRAY_NONBLOCKING;

  platform::ZeroedArray<std::int16_t> pool;
  std::vector<SivrayFxMemoryUser*> users;
  std::uint32_t bank = 0;
  std::size_t bankSamples = 0;
  std::array<std::size_t, 2> writtenSamples{};  ///< At the start of each bank; what lies behind is zero.
};

}  // namespace tesh::bramel::plugin::sivray::effects
