// Random numbers that are the same on every machine, and the generators of one channel of a sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>
#include <string_view>

namespace sivray::content {

/// A permuted congruential generator (PCG) with 32-bit output.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state(seed * kMultiplier + kIncrement) { next(); }

  std::uint32_t next() {
    const std::uint64_t old = state;
    state = old * kMultiplier + kIncrement;
    const auto mixed = static_cast<std::uint32_t>(((old >> 18) ^ old) >> 27);
    const auto turn = static_cast<std::uint32_t>(old >> 59);
    return (mixed >> turn) | (mixed << ((32 - turn) & 31));
  }

  /// Returns a number from 0 to below 1.
  double unit() { return static_cast<double>(next()) * 0x1p-32; }

  /// Returns a number from -1 to below 1.
  double both() { return unit() * 2.0 - 1.0; }

  /// Returns a number from `low` to below `high`.
  double between(double low, double high) { return low + (high - low) * unit(); }

  /// Returns a roughly normal number: mean 0, variance 1, within ±3.5.
  double normal() {
    // Exactly the sum of four results of `both`.
    const std::int64_t sum = std::int64_t{next()} + next() + next() + next();
    return (static_cast<double>(sum) * 0x1p-31 - 4.0) * 0.8660254037844386;
  }

 private:
  static constexpr std::uint64_t kMultiplier = 6364136223846793005U;
  static constexpr std::uint64_t kIncrement = 1442695040888963407U;

  std::uint64_t state;
};

/// Returns a seed derived from a text, the same on every machine.
inline std::uint64_t seedOf(std::string_view text) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : text) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  }
  return hash;
}

/// The generators of one channel: `shared` yields the same numbers in both channels, `own` different ones.
struct Dice {
  Dice(std::uint64_t seed, int channel) : shared(seed), own(seed + 1000U + static_cast<unsigned>(channel)) {}

  Random shared;
  Random own;
};

/// White noise of variance 1. At `width` 0 both channels are the same, at 1 independent.
class Noise {
 public:
  Noise(const Dice& dice, std::uint64_t layer, double width)
      : shared(Random(dice.shared).next() + layer),
        own(Random(dice.own).next() + layer),
        sharedGain(std::sqrt(1.0 - width)),
        ownGain(std::sqrt(width)) {}

  double next() {
    const double both = sharedGain * shared.normal();
    return ownGain == 0.0 ? both : both + ownGain * own.normal();
  }

 private:
  Random shared;
  Random own;
  double sharedGain;
  double ownGain;
};

}  // namespace sivray::content
