// The settings, the filters and the folding curve of the distortion.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Q60393Distortion.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/OneSample.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

using Memory = Q60393Distortion::Memory;

constexpr std::int64_t kTop = 2147483647;

/// Gain before the shift: 0.045 to 1.0.
constexpr SquareRange kGain{1489, 31279};

/// The shift multiplies the gain by 64, 36 dB.
constexpr int kGainShift = 6;

// The highpass, Q15: a corner of 205 Hz.
constexpr std::int64_t kHighpassA0 = 32294;
constexpr std::int64_t kHighpassB1 = 31820;

/// Slope of the folding curve at 0: 0.8125.
constexpr std::int64_t kFoldSlope = 26624;

// A peaking cut of -12 dB at 8000 Hz with a Q of 4.0, 29 fractional bits. The test derives these values from those
// figures.
constexpr std::int64_t kB0 = 411701568;
constexpr std::int64_t kB1 = -308910432;
constexpr std::int64_t kB2 = 327725504;
constexpr std::int64_t kA1 = 308910432;
constexpr std::int64_t kA2 = -202556144;

std::int64_t clampTop(std::int64_t x) { return std::clamp(x, -kTop, kTop); }

std::int64_t highpass(Memory& m, std::int64_t x) {
  const std::int64_t y =
      clampTop((kHighpassA0 * x >> 15) + (-kHighpassA0 * m.highpassIn >> 15) + (kHighpassB1 * m.highpassOut >> 15));
  m.highpassIn = x;
  m.highpassOut = y;
  return y;
}

/// Rises to a quarter of full scale at half of it, then folds back to 0.152 at full scale, and is flat outside.
std::int64_t folded(std::int64_t v) {
  const std::int64_t u = (clampTop(v) * kFoldSlope) >> 15;
  const std::int64_t square = (u * u) >> 31;
  // A branch on the sign, which is random, would be mispredicted.
  const std::int64_t sign = u >> 63;
  return u - ((square ^ sign) - sign);
}

std::int64_t postFilter(Memory& m, std::int64_t s) {
  const std::int64_t w =
      (s * kB0 >> 31) + (m.in1 * kB1 >> 31) + (m.in2 * kB2 >> 31) + (m.out1 * kA1 >> 31) + (m.out2 * kA2 >> 31);
  const std::int64_t y = clampTop(w * 4);
  m.in2 = m.in1;
  m.in1 = s;
  m.out2 = m.out1;
  m.out1 = y;
  return y;
}

}  // namespace

Q60393Distortion::Settings Q60393Distortion::settingsOf(const Knobs& knobs) {
  return {kGain.at(knobs.edit1), kDriveLevel.at(knobs.edit2)};
}

void Q60393Distortion::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  const std::int64_t x = static_cast<std::int64_t>((left + right) & ~1) * 16384;
  const std::int64_t v = (gain.value() * highpass(memory, x)) >> (15 - kGainShift);
  const std::int64_t y = postFilter(memory, (level.value() * folded(v)) >> 15);
  left = static_cast<std::int16_t>(shortLeak(shortLeak(static_cast<std::int32_t>(y >> 15))));
  right = left;
}

bool Q60393Distortion::isSilent(unsigned) const {
  Q60393Distortion next = *this;
  std::int16_t left = 0;
  std::int16_t right = 0;
  next.step({}, left, right);
  return left == 0 && next.memory == memory;
}

template class TwoKnobEffect<Q60393Distortion>;

}  // namespace tesh::bramel::plugin::sivray::effects
