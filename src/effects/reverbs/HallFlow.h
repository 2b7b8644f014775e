// The numbers of the hall: delays, coefficients and gains. Also its state between samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/EngineRate.h"
#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

inline constexpr std::size_t kHallLanes = 4;

/// One value per lane.
using HallRow = std::array<std::int16_t, kHallLanes>;
using HallDelays = std::array<unsigned, kHallLanes>;

namespace detail {
/// Delays in samples, designed at 48 kHz, scaled to the engine's rate and truncated.
constexpr HallDelays hallDelays(const HallDelays& at48k) {
  constexpr auto kRate = static_cast<float>(cofu::core::kEngineRate);
  HallDelays delays{};
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    delays[k] = static_cast<unsigned>(static_cast<float>(at48k[k]) * (kRate / 48000.0F));
  }
  return delays;
}
}  // namespace detail

inline constexpr HallDelays kDiffuserDelays = detail::hallDelays({1395, 2603, 1850, 1135});
inline constexpr HallDelays kTankDelays = detail::hallDelays({7103, 6623, 5951, 5519});
inline constexpr HallDelays kTapsA = detail::hallDelays({3594, 1674, 1434, 714});
inline constexpr HallDelays kTapsB = detail::hallDelays({2778, 2634, 1914, 1194});

/// Samples: 10 ms and one more.
inline constexpr unsigned kPredelay = 442;

/// Lengths of the rings in samples: powers of two that hold the longest delay and a register of sample lanes.
inline constexpr unsigned kPredelayLength = 512;
inline constexpr unsigned kTankLength = 8192;
inline constexpr unsigned kDiffuserLength = 4096;

/// Allpass coefficients of the diffuser, Q15.
inline constexpr HallRow kDiffuserCoefficients{-18251, -16940, -17595, -17661};

/// Loop gains of the four combs (Q15, alternating in sign) by Time knob: 0.1 s at 0 up to 10 s at 127.
extern const std::array<HallRow, kTopKnob + 1> hallGains;

/// The dampers in the hall's combs: four one-pole low-passes that invert the sign, z = (z + comb) * damper - comb. Of
/// the whole law, only they depend on their own last sample. HallStep.h computes them.
struct HallDampers {
  /// The damper of the longest comb is 0.36468 (Q15); those of shorter combs are less, in proportion to their delays.
  HallDampers();

  std::array<std::int32_t, kHallLanes> last{};        ///< The last z of each comb.
  std::array<std::int16_t, 2 * kHallLanes> ofLast{};  ///< Q15 weight of the last z, and 0.
  std::array<std::int16_t, 2 * kHallLanes> ofComb{};  ///< Q15 weight of the comb, and 0.
};

/// The state of the hall's law, which HallStep.h updates, and its settings.
struct HallFlow {
  static constexpr std::int32_t kInputScale = 9830;  ///< 0.3 in Q15.
  static constexpr std::int32_t kEarlyGain = 3932;   ///< 0.12 in Q15.

  // The rings follow one another: the predelay, four of the tank, four of the diffuser.
  static constexpr std::size_t kTankStart = kPredelayLength;
  static constexpr std::size_t kDiffuserStart = kTankStart + kHallLanes * kTankLength;
  static constexpr std::size_t kMemorySamples = kDiffuserStart + kHallLanes * kDiffuserLength;

  std::int16_t* tank(std::size_t k) const { return memory + kTankStart + k * kTankLength; }
  std::int16_t* diffuser(std::size_t k) const { return memory + kDiffuserStart + k * kDiffuserLength; }

  std::int16_t* memory = nullptr;
  unsigned position = 0;           ///< Index at which every ring is written next.
  std::int16_t firstDiffused = 0;  ///< The last output of the first diffuser.
  HallDampers dampers;
  HallRow gains{};  ///< A row of `hallGains`.
  SmoothedValue level;
  std::int32_t levelTarget = 0;  ///< Q15.
};

}  // namespace tesh::bramel::plugin::sivray::effects
