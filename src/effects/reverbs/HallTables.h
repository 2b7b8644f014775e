// The numbers of the hall: delays, coefficients, and the gains that give each reverberation time.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/EngineRate.h"
#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray::effects {

inline constexpr std::size_t kHallLanes = 4;

/// One value per lane.
using HallRow = std::array<std::int16_t, kHallLanes>;
using HallDelays = std::array<unsigned, kHallLanes>;

inline constexpr auto kHallSampleRate = static_cast<float>(cofu::core::kEngineRate);

namespace detail {
/// Delays in samples, laid out for 48 kHz, brought to the running rate and truncated.
constexpr HallDelays hallDelays(const HallDelays& at48k) {
  HallDelays delays{};
  for (std::size_t k = 0; k < kHallLanes; ++k) {
    delays[k] = static_cast<unsigned>(static_cast<float>(at48k[k]) * (kHallSampleRate / 48000.0F));
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

/// Samples of a ring: powers of two that hold the longest delay and a register of sample lanes.
inline constexpr unsigned kPredelayLength = 512;
inline constexpr unsigned kTankLength = 8192;
inline constexpr unsigned kDiffuserLength = 4096;

/// Allpass coefficients of the diffuser, Q15.
inline constexpr HallRow kDiffuserCoefficients{-18251, -16940, -17595, -17661};

/// Coefficients of the one-pole dampers in the tank, Q15: 0.36468 for the longest comb, less in proportion to its delay
/// for a shorter one.
const HallRow& hallDampers();

/// Loop gains of the four combs (Q15, alternating in sign) for a knob value: 0.1 s at 0 up to 10 s at 127.
const HallRow& hallGains(unsigned knob) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::plugin::sivray::effects
