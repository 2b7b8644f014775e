// A one-pole smoother for knob values: its 32-bit state is the value shifted left by 15.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

/// 1.0 with 15 fractional bits; one more than full scale.
inline constexpr std::int32_t kOneQ15 = 32768;

/// The part below the point of a value with 15 fractional bits.
constexpr std::int32_t fractionQ15(std::int64_t value) { return static_cast<std::int32_t>(value & (kOneQ15 - 1)); }

/// Smoothing factor per sample in 1/32768: a time constant of about 320 samples.
inline constexpr std::int32_t kGlide = 102;

/// Smoothing factor in immediate mode, by which the target is reached within a sample or two.
inline constexpr std::int32_t kGlideImmediate = cofu::core::kFullScale;

/// The factor for a mode.
constexpr std::int32_t glideFactor(bool immediate) { return immediate ? kGlideImmediate : kGlide; }

/// A smoother that keeps a share of its value and adds a share of its target per sample; Q15.
struct OnePole {
  std::int64_t kept;
  std::int64_t taken;

  constexpr std::int64_t next(std::int64_t value, std::int64_t target) const {
    return (value * kept + target * taken) >> 15;
  }
};

/// A smoothed value. `state` is public: some laws read its fraction.
struct SmoothedValue {
  std::int32_t state = 0;  ///< The value, 15 fractional bits.

  /// The whole part.
  std::int32_t value() const { return state >> 15; }

  /// The fraction, 15 bits.
  std::int32_t fraction() const { return fractionQ15(state); }

  /// Moves by one sample towards `target` with factor `k`.
  void glide(std::int32_t target, std::int32_t k) {
    using namespace cofu::core;
    state = wrapAdd(state, wrapMul(wrapSub(target, state >> 15), k));
  }

  /// Sets the value to `target` at once.
  void setNow(std::int32_t target) { state = cofu::core::wrapShiftLeft(target, 15); }

  /// Whether further smoothing towards `target` would not change the value.
  bool restsAt(std::int32_t target) const { return value() == target; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
