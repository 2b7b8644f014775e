// What the hall hands from sample to sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "effects/interfaces/SmoothedValue.h"
#include "effects/reverbs/HallTables.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The dampers in the hall's combs, the only part of its law that waits for its own last sample: four one-pole
/// low-passes that turn the sign: z = (z + comb) * damper - comb, with Q15 dampers from 0 to 1.0. HallStep.h moves them
/// on.
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
