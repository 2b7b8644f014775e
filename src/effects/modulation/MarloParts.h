// What the three effects of the Marlo family share: settings, delay lines, smoothing and the moving tap. All arithmetic
// is single precision, one operation after the other as written. Only numbers that depend on nothing but the sample
// rate are computed in double precision and then kept as single.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/EngineRate.h"
#include "core/RealTime.h"
#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/Silence.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The sample value that is 1.0 inside the Marlo effects.
inline constexpr float kMarloFullScale = 32767.0F;

/// What the knobs set. Steps are what `marloSmoothed` gains per sample.
struct MarloSettings {
  float rate = 0.0F;        ///< Of the triangle, cycles per sample: 0.125 to 7 Hz.
  float depthStep = 0.0F;   ///< Of the ensemble's depth, which rests at 70.56 to 282.24 samples.
  float spreadStep = 0.0F;  ///< Of the spread, which rests at 1 to 2.
};

/// Any thread.
MarloSettings marloSettingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

/// What a one-pole smoother with a time constant of 500 samples (11 ms) keeps of its value per sample, and what it
/// gains of its target.
inline constexpr float kMarloKept = 0.998F;
inline constexpr float kMarloGained = 0.002F;

inline float marloSmoothed(float value, float step) { return value * kMarloKept + step; }

/// One channel's delay line. It is written downwards, so that a larger position is an older sample.
struct MarloLine {
  static constexpr std::size_t kLength = 4096;
  static constexpr auto kWrap = static_cast<float>(kLength);

  /// The last entry always copies entry 0, so that interpolation may read one past the end.
  std::array<float, kLength + 1> samples{};
};

/// Both channels' lines, which are written at the same place.
struct MarloLines {
  static constexpr unsigned kMemory = MarloLine::kLength;

  /// Whether the last `count` samples written to both lines are zero.
  bool isSilent(unsigned count) const {
    const std::size_t end = writeIndex + 1 + count;
    return isZeroBefore(leftLine.samples.data(), MarloLine::kLength, end, count) &&
           isZeroBefore(rightLine.samples.data(), MarloLine::kLength, end, count);
  }

  /// Moves on by `count` samples of silence over silence.
  void skip(unsigned count) { writeIndex = (writeIndex - count) & (MarloLine::kLength - 1); }

  void clear() {
    leftLine.samples.fill(0.0F);
    rightLine.samples.fill(0.0F);
    writeIndex = 0;
  }

  MarloLine leftLine;
  MarloLine rightLine;
  std::size_t writeIndex = 0;
};

/// The triangle that moves the taps of chorus and phase, on both sides: the right one lags by up to half a cycle.
struct MarloSweep {
  /// Move by one sample.
  float nextSpread(const MarloSettings& to) { return spread = marloSmoothed(spread, to.spreadStep); }
  float nextPhase(const MarloSettings& to) {
    phase -= to.rate;
    return phase = phase < 0.0F ? phase + 1.0F : phase;
  }

  float spread = 1.0F;
  float phase = 0.0F;    ///< Cycles, 0 to 1.
  float leftLfo = 0.0F;  ///< The smoothed triangles, -1.0 to 1.0.
  float rightLfo = 0.0F;
};

/// Share that the triangle's smoother keeps per sample: a corner of 3.3865754 Hz.
extern const float kMarloLfoKept;

}  // namespace tesh::bramel::plugin::sivray::effects
