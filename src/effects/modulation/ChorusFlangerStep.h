// The law of the chorus/flanger, sample by sample or on consecutive samples in words. LaneRun.h tells where this may be
// included. In lanes, the triangles of a register are computed first, because each sample of their smoothing depends on
// the last one. The rest of the register then follows side by side.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

#include "core/FixedPoint.h"
#include "effects/interfaces/LaneRun.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The triangles at `phases`, 0 to 32768.
template <typename Words>
Words trianglesAt(Words phases) {
  return magnitude(phases).template shiftedRightUnsigned<16>();
}

/// A one-pole smoother of the triangle with a factor of 1/256 per sample. Needs no limit: from a triangle of up to
/// 32768 and a state of up to 32767 it gives at most 32767.
template <typename Words>
Words followed(Words triangles, Words follow) {
  const Words kept = follow.template shiftedLeft<8>() - follow;
  return (triangles + kept).template shiftedRight<8>();
}

/// Delays by the smoothed triangles, 16 fractional bits.
template <typename Words>
Words delaysAt(Words follow) {
  return timesShort(follow, ChorusFlangerLaw::kDelayPerTriangle) + Words::all(ChorusFlangerLaw::kLeastDelay);
}

/// The sample of a line at each index in the lower half, the next one in the upper half.
template <typename Words>
Words pairsAt(const std::int16_t* line, Words indices) {
  return indices.mapped([line](std::int32_t index) {
    std::int32_t pair = 0;
    std::memcpy(&pair, line + static_cast<std::uint32_t>(index), sizeof(pair));
    return pair;
  });
}

/// The index of the pair that a delay of 0 would read, for each sample of a register.
template <typename Words>
Words undelayed(const ChorusFlangerLaw& law) {
  return Words::after(static_cast<std::int32_t>(law.writeIndex) - 2, 1);
}

/// The inverted taps. If two samples are far apart, the product wraps, so a tap may need 17 bits.
template <typename Words>
Words tapsAt(const std::int16_t* line, Words before, Words delays) {
  constexpr auto kMask = static_cast<std::int32_t>(ChorusFlangerLaw::kLineLength - 1);
  const Words pairs = pairsAt(line, (before - delays.template shiftedRightUnsigned<16>()) & Words::all(kMask));
  const Words near = pairs.template shiftedRight<16>();
  const Words beyond = pairs.lowerHalves();
  const Words fraction = delays & Words::all(65535);
  return leak(leakTwice(near + ((beyond - near) * fraction).template shiftedRight<16>()));
}

/// `in` plus a share (Q15) of the taps.
template <typename Words>
Words plusTaps(Words in, Words taps, std::int32_t gain) {
  return in + (taps * Words::all(gain)).template shiftedRight<15>();
}

/// Writes the next samples to a line. Does not use storeToRing, whose call would displace the loop's constants from
/// registers.
template <typename Samples>
void writeLine(std::int16_t* line, std::uint32_t writeIndex, Samples samples) {
  constexpr unsigned kLength = ChorusFlangerLaw::kLineLength;
  if (Samples::kCount == 1 || writeIndex + Samples::kCount <= kLength) [[likely]] {
    samples.store(line + writeIndex);
  } else {
    std::int16_t separate[Samples::kCount];
    samples.store(separate);
    for (unsigned i = 0; i < Samples::kCount; ++i) {
      line[(writeIndex + i) & (kLength - 1)] = separate[i];
    }
  }
  line[kLength] = line[0];
}

/// The next samples of a channel, in place. `before` is `undelayed`.
template <typename Words>
void runChannel(const ChorusFlangerLaw& law, std::int16_t* line, Words before, Words delays, std::int16_t* samples) {
  const Words taps = tapsAt(line, before, delays);
  const Words in = Words::ofSamples(samples);
  const auto [back, out] =
      saturatedSamples(plusTaps(in, taps, law.feedback.value()), plusTaps(in, taps, law.wet.value()));
  writeLine(line, law.writeIndex, back);
  out.store(samples);
}

/// Moves both smoothed triangles by `count` samples, one after the other.
inline void followTriangles(ChorusFlangerLaw& law, std::int32_t step, unsigned count) {
  using lanes::OneWord;
  OneWord phase{law.phase};
  OneWord left{law.leftChannel.follow};
  OneWord right{law.rightChannel.follow};
  for (; count > 0; --count) {
    phase = phase + OneWord{step};
    left = followed(trianglesAt(phase), left);
    right = followed(trianglesAt(phase + OneWord{kRightPhaseLead}), right);
  }
  law.phase = phase.v;
  law.leftChannel.follow = left.v;
  law.rightChannel.follow = right.v;
}

/// A value of each channel.
template <typename Words>
struct OfBoth {
  Words left;
  Words right;
};

/// The registers of 128 bits on a processor with `R`, for the sample-by-sample smoothing.
template <typename R>
struct SerialRegisters {
  using Type = R;
};
template <cofu::registers::HasHalves R>
struct SerialRegisters<R> {
  using Type = typename R::Half;
};

/// The smoothed triangles of the next register, computed with both channels of a sample side by side. `now` holds left
/// and right in the lower two lanes and is moved to the last sample.
template <typename R, typename Serial>
OfBoth<lanes::WordsIn<R>> nextTriangles(const ChorusFlangerLaw& law, lanes::WordsIn<Serial>& now) {
  using Words = lanes::WordsIn<R>;
  const auto twice = [&now](typename Serial::Integers triangles) {
    const auto first = followed({triangles}, now);
    now = followed({Serial::zipHigh64(triangles, triangles)}, first);
    return Serial::zipLow64(first.v, now.v);
  };
  const Words phases = Words::after(law.phase, law.lfoStep);
  const Words left = trianglesAt(phases);
  const Words right = trianglesAt(phases + Words::all(kRightPhaseLead));
  // Samples 0 and 1, then 2 and 3; in a register with two halves also 4 and 5, then 6 and 7.
  auto outer = R::zipLow32(left.v, right.v);
  auto inner = R::zipHigh32(left.v, right.v);
  if constexpr (cofu::registers::HasHalves<R>) {
    const auto first = twice(R::lower(outer));
    const auto second = twice(R::lower(inner));
    outer = R::joined(first, twice(R::upper(outer)));
    inner = R::joined(second, twice(R::upper(inner)));
  } else {
    outer = twice(outer);
    inner = twice(inner);
  }
  return {{R::evens32(outer, inner)}, {R::odds32(outer, inner)}};
}

/// Processes whole registers and returns the number of samples. Stops if a delay, at the foot of a triangle, is shorter
/// than the register.
template <typename R>
[[gnu::flatten]] unsigned runFlanger(ChorusFlangerLaw& law, std::int16_t* left, std::int16_t* right,
                                     unsigned count) SIVRAY_NONBLOCKING {
  using Words = lanes::WordsIn<R>;
  using Serial = typename SerialRegisters<R>::Type;
  constexpr auto kCount = static_cast<std::int32_t>(Words::kCount);
  lanes::WordsIn<Serial> now{Serial::four32(law.leftChannel.follow, law.rightChannel.follow, 0, 0)};
  unsigned done = 0;
  for (; done + Words::kCount <= count; done += Words::kCount) {
    lanes::WordsIn<Serial> next = now;
    const OfBoth<Words> triangles = nextTriangles<R>(law, next);
    const OfBoth<Words> delays{delaysAt(triangles.left), delaysAt(triangles.right)};
    const Words shortest = Words::all(kCount << 16);
    if (isAnyNegative(delays.left - shortest) || isAnyNegative(delays.right - shortest)) {
      break;
    }
    const auto before = undelayed<Words>(law);
    runChannel(law, law.leftChannel.line.data(), before, delays.left, left + done);
    runChannel(law, law.rightChannel.line.data(), before, delays.right, right + done);
    now = next;
    law.phase = cofu::core::wrapAdd(law.phase, cofu::core::wrapMul(law.lfoStep, kCount));
    law.moveIndex(Words::kCount);
  }
  law.leftChannel.follow = Serial::first32(now.v);
  law.rightChannel.follow = Serial::second32(now.v);
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects
