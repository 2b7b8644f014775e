// Sounds that fall by 60 dB in `t60` seconds, as input for measurements.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>

#include "content/measure/Hit.h"

namespace sivray::content {

inline Hit fallingSine(double hertz, double t60, double seconds = 2.0, double rate = kMeasureRate) {
  Hit hit(static_cast<std::size_t>(seconds * rate));
  for (std::size_t i = 0; i < hit.size(); ++i) {
    const double time = static_cast<double>(i) / rate;
    hit[i] = static_cast<float>(std::pow(10.0, -3.0 * time / t60) * std::cos(2.0 * std::numbers::pi * hertz * time));
  }
  return hit;
}

inline Hit fallingNoise(double t60, unsigned seed, double seconds = 2.0) {
  std::mt19937 dice(seed);
  Hit hit(static_cast<std::size_t>(seconds * kMeasureRate));
  for (std::size_t i = 0; i < hit.size(); ++i) {
    const double level = std::pow(10.0, -3.0 * static_cast<double>(i) / kMeasureRate / t60);
    hit[i] = static_cast<float>(level * (static_cast<double>(dice()) / 2147483648.0 - 1.0));
  }
  return hit;
}

}  // namespace sivray::content
