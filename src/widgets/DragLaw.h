// Converts pointer movement to a change of value: the relative drag of knobs and faders, the absolute position, and
// rounding to states. Pure functions.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel::drag {

/// Value change per pixel per second, before the power. All constants were tuned by trial.
inline constexpr float kSpeedScale = 0.00013F;
/// Makes fast movement count slightly more than proportionally.
inline constexpr float kPower = 1.1F;
inline constexpr float kFineFactor = 0.1F;
/// Shortest time between two events, in seconds.
inline constexpr double kShortestTime = 0.001;

/// Whole panel pixels; up and right increase.
struct Pointer {
  int x = 0;
  int y = 0;
};

struct Settings {
  bool vertical = false;
  float sensitivity = 1.0F;
  float speedScale = kSpeedScale;
};

struct State {
  Pointer last;
  double lastTime = 0.0;  ///< Seconds.
  /// 0 to 1, not rounded to a state, so that slow drags add up until the next state is reached.
  float rawValue = 0.0F;
};

/// The change of the raw value for `pixels` in `seconds`. Depends on the speed, not on the time.
float step(int pixels, double seconds, const Settings& settings, bool fine);

/// Updates the state for a new pointer position at `now` (seconds), and limits the raw value to 0 to 1.
void advance(State& state, const Settings& settings, Pointer pointer, double now, bool fine);

/// The value at an absolute pointer position in a component of `width` by `height`, not limited to 0 to 1. 0 if the
/// component has no size.
float positionOf(Pointer pointer, int width, int height, bool vertical);

/// `value` limited to 0 to 1 and, unless `stepCount` is 0, rounded to a state.
float quantize(float value, std::uint64_t stepCount, const IParameterQuantizer& quantizer);

}  // namespace tesh::bramel::drag
