// How a pointer moves a value: the relative drag of knobs and faders, the absolute position, and the rounding to
// states. Pure functions.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel::drag {

/// What a pixel a second moves, before the power. All constants are tuned by hand.
inline constexpr float kSpeedScale = 0.00013F;
/// Fast movement counts a little more than its share.
inline constexpr float kPower = 1.1F;
inline constexpr float kFineFactor = 0.1F;
/// Seconds between two events, at the least.
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
  float rawValue = 0.0F;  ///< 0 to 1, before it is rounded to a state: slow drags add up until the next one is reached.
};

/// The change of the raw value for `pixels` in `seconds`. It grows with speed and not with time.
float step(int pixels, double seconds, const Settings& settings, bool fine);

/// Moves the state on to a new pointer at `now` (seconds) and holds the raw value in 0 to 1.
void advance(State& state, const Settings& settings, Pointer pointer, double now, bool fine);

/// The value of an absolute pointer in a component of `width` by `height`, not held to 0 to 1; 0 if it has no size.
float positionOf(Pointer pointer, int width, int height, bool vertical);

/// `value` held to 0 to 1 and, unless `stepCount` is 0, moved to one of its states.
float quantize(float value, std::uint64_t stepCount, const IParameterQuantizer& quantizer);

}  // namespace tesh::bramel::drag
