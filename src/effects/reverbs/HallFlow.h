// What the hall hands from sample to sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "effects/interfaces/SmoothedValue.h"
#include "effects/reverbs/HallDampers.h"
#include "effects/reverbs/HallTables.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The state of the hall's law, which HallStep.h moves on, and what the knobs set for it.
struct HallFlow {
  static constexpr std::int32_t kInputScale = 9830;  ///< 0.3 in Q15.
  static constexpr std::int32_t kEarlyGain = 3932;   ///< 0.12 in Q15.

  // The rings lie one behind the other: the predelay, four of the tank, four of the diffuser.
  static constexpr std::size_t kTankStart = kPredelayLength;
  static constexpr std::size_t kDiffuserStart = kTankStart + kHallLanes * kTankLength;
  static constexpr std::size_t kMemorySamples = kDiffuserStart + kHallLanes * kDiffuserLength;

  std::int16_t* tank(std::size_t k) const { return memory + kTankStart + k * kTankLength; }
  std::int16_t* diffuser(std::size_t k) const { return memory + kDiffuserStart + k * kDiffuserLength; }

  std::int16_t* memory = nullptr;
  unsigned position = 0;           ///< Where every ring is written next.
  std::int16_t firstDiffused = 0;  ///< The last output of the first diffuser.
  HallDampers dampers{hallDampers()};
  HallRow gains = hallGains(0);  ///< Loop gains of the combs, Q15.
  SmoothedValue level;
  std::int32_t levelTarget = 0;  ///< Q15.
};

}  // namespace tesh::bramel::plugin::sivray::effects
