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
#include "effects/interfaces/Flushed.h"
#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/Silence.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The sample value that is 1.0 inside the Marlo effects.
inline constexpr float kMarloFullScale = 32767.0F;

inline float limited(float x) { return std::clamp(flushed(x), -1.0F, 1.0F); }

/// The sample of a value that is `limited`.
inline std::int16_t marloSample(float x) { return static_cast<std::int16_t>(x * kMarloFullScale); }

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

  void write(std::size_t at, float x) {
    samples[at] = x;
    samples[kLength] = samples[0];
  }

  /// Reads between two samples. `position` is 0 to twice the length.
  float read(float position) const {
    const float wrapped = position >= kWrap ? position - kWrap : position;
    const auto whole = static_cast<std::int32_t>(wrapped);
    const auto i = static_cast<std::size_t>(whole);
    return samples[i] + (samples[i + 1] - samples[i]) * (wrapped - static_cast<float>(whole));
  }

  /// The last entry always copies entry 0, so that interpolation may read one past the end.
  std::array<float, kLength + 1> samples{};
};

/// The frame of one sample: both channels go in, both lines are written, and `sound` gives what comes out, as
/// `sound(left in, right in, left out, right out)` on -1.0 .. 1.0.
struct MarloLines {
  template <typename Sound>
  void step(std::int16_t& left, std::int16_t& right, Sound&& sound) {
    const float inLeft = flushed(static_cast<float>(left) / kMarloFullScale);
    const float inRight = flushed(static_cast<float>(right) / kMarloFullScale);
    leftLine.write(writeIndex, inLeft);
    rightLine.write(writeIndex, inRight);
    float outLeft = 0.0F;
    float outRight = 0.0F;
    sound(inLeft, inRight, outLeft, outRight);
    left = marloSample(outLeft);
    right = marloSample(outRight);
    writeIndex = (writeIndex - 1) & (MarloLine::kLength - 1);
  }

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

  float writePosition() const { return static_cast<float>(writeIndex); }

  MarloLine leftLine;
  MarloLine rightLine;
  std::size_t writeIndex = 0;
};

/// The triangle that moves the taps of chorus and phase, on both sides: the right one lags by up to half a cycle.
struct MarloSweep {
  void advance(const MarloSettings& to) {
    nextSpread(to);
    nextPhase(to);
  }

  /// Move by one sample.
  float nextSpread(const MarloSettings& to) { return spread = marloSmoothed(spread, to.spreadStep); }
  float nextPhase(const MarloSettings& to) {
    phase -= to.rate;
    return phase = phase < 0.0F ? phase + 1.0F : phase;
  }

  /// Moves on by `count` samples.
  void skip(const MarloSettings& to, unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
      advance(to);
      left();
      right();
    }
  }

  /// The smoothed triangles, -1.0 to 1.0.
  float left() { return followed(leftLfo, phase); }
  float right() {
    const float p = phase - (spread - 1.0F) * 0.5F;
    return followed(rightLfo, p < 0.0F ? p + 1.0F : p);
  }

  float spread = 1.0F;
  float phase = 0.0F;  ///< Cycles, 0 to 1.
  float leftLfo = 0.0F;
  float rightLfo = 0.0F;

 private:
  static float followed(float& lfo, float phase);
};

/// Share that the triangle's smoother keeps per sample: a corner of 3.3865754 Hz.
extern const float kMarloLfoKept;

inline float MarloSweep::followed(float& lfo, float phase) {
  const float twice = 2.0F * phase;
  const float t = phase >= 0.5F ? twice - 1.0F : 1.0F - twice;
  lfo = t + (lfo - t) * kMarloLfoKept;
  return lfo;
}

}  // namespace tesh::bramel::plugin::sivray::effects
