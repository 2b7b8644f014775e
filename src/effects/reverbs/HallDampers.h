// The dampers in the hall's combs: the only part of its law that waits for its own last sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/reverbs/HallTables.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Four one-pole low-passes that turn the sign: z = (z + comb) * damper - comb, with Q15 dampers from 0 to 1.0.
/// HallDamperStep.h moves them on.
struct HallDampers {
  explicit HallDampers(const HallRow& dampers) {
    for (std::size_t k = 0; k < kHallLanes; ++k) {
      ofLast[2 * k] = dampers[k];
      ofComb[2 * k] = static_cast<std::int16_t>(dampers[k] - 32768);
    }
  }

  void reset() { last = {}; }

  std::array<std::int32_t, kHallLanes> last{};        ///< The last z of each comb.
  std::array<std::int16_t, 2 * kHallLanes> ofLast{};  ///< Q15 weight of the last z, and 0.
  std::array<std::int16_t, 2 * kHallLanes> ofComb{};  ///< Q15 weight of the comb, and 0.
};

}  // namespace tesh::bramel::plugin::sivray::effects
