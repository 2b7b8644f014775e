// Converts pointer movement to a change of value.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/DragLaw.h"

#include <algorithm>
#include <cmath>

namespace tesh::bramel::drag {
namespace {

/// NaN becomes 0.
float clamped(float value) { return value > 0.0F ? std::min(value, 1.0F) : 0.0F; }

}  // namespace

float step(int pixels, double seconds, const Settings& settings, bool fine) {
  const auto speed = static_cast<float>(static_cast<double>(pixels) / std::max(seconds, kShortestTime));
  float k = speed * settings.sensitivity * settings.speedScale;
  if (fine) {
    k *= kFineFactor;
  }
  return std::copysign(std::pow(std::abs(k), kPower), speed);
}

void advance(State& state, const Settings& settings, Pointer pointer, double now, bool fine) {
  const int pixels = settings.vertical ? state.last.y - pointer.y : pointer.x - state.last.x;
  state.rawValue = clamped(state.rawValue + step(pixels, now - state.lastTime, settings, fine));
  state.lastTime = now;
  state.last = pointer;
}

float positionOf(Pointer pointer, int width, int height, bool vertical) {
  const int length = vertical ? height : width;
  if (length <= 0) {
    return 0.0F;
  }
  const float part = static_cast<float>(vertical ? pointer.y : pointer.x) / static_cast<float>(length);
  return vertical ? 1.0F - part : part;
}

float quantize(float value, std::uint64_t stepCount, const IParameterQuantizer& quantizer) {
  if (stepCount == 0) {
    return clamped(value);
  }
  if (stepCount == 1) {
    return 0.0F;
  }
  const std::int64_t state = quantizer.valueToState(value, stepCount);
  return clamped(static_cast<float>(state) / static_cast<float>(stepCount - 1));
}

}  // namespace tesh::bramel::drag
