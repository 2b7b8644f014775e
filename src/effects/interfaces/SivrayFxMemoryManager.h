// The pool of delay memory that all effects with long lines share.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "effects/interfaces/SivrayFxMemoryUser.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Two banks of the largest size that any user asks for. Every request takes the other bank than the last one did, so
/// that an effect that fades in and the one that fades out work in different memory.
class SivrayFxMemoryManager : public SivrayFxMemoryAssigner {
 public:
  std::int16_t* acquire() override;
  void add(SivrayFxMemoryUser* user) override;

 private:
  std::vector<std::int16_t> pool;
  std::uint32_t bank = 0;
  std::size_t bankSamples = 0;
};

}  // namespace tesh::bramel::plugin::sivray::effects
