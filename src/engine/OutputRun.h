// The output stage over many samples of a channel, as templates over the registers of an instruction set. Each kernel's
// source file includes it and compiles it for its own set, so everything here has internal linkage.
//
// All values fit words of 16 bits, and (a * b) >> 15 is the high word of 2a * b.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/FixedPoint.h"
#include "engine/OutputStage.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// Limits -32768, which 16 bits can hold, to the engine's lowest sample value, -32767.
template <typename R>
typename R::Integers limitedLow(typename R::Integers x) {
  return R::max16(x, R::all16(-cofu::core::kFullScale));
}

/// (gain * x) >> 14, limited to 16 bits.
template <typename R>
typename R::Integers productsShifted14(typename R::Integers x, typename R::Integers gain) {
  const auto shifted = [gain](typename R::Integers words) {
    return R::template shiftRight32<14>(R::pairSums16(words, gain));
  };
  return R::packed32(shifted(R::zipLow16(x, R::zero())), shifted(R::zipHigh16(x, R::zero())));
}

template <typename R>
void storeSamples(float* to, typename R::Integers words) {
  constexpr unsigned kFloats = R::kBytes / sizeof(float);
  const auto put = [](float* at, typename R::Integers integers, float scale) {
    R::storeFloats(at, R::floatsOf(integers) * R::allFloats(scale));
  };
  if constexpr (requires { typename R::Half; }) {
    put(to, R::widened16(R::lower(words)), kFloatScale);
    put(to + kFloats, R::widened16(R::upper(words)), kFloatScale);
  } else {
    // Words in the high half of 32-bit lanes need no shift: all steps to a float are exact.
    put(to, R::zipLow16(R::zero(), words), kFloatScale / 65536.0F);
    put(to + kFloats, R::zipHigh16(R::zero(), words), kFloatScale / 65536.0F);
  }
}

/// A master gain of at most 1.0: (g * x) >> 14 is the high word of `factor` * x, plus x where `kept` is -1.
template <typename R>
struct GainToOne {
  using Vec = typename R::Integers;

  explicit GainToOne(std::int32_t gain)
      : factor(R::all16(static_cast<std::int16_t>(4 * gain))), kept(R::all16(gain < kUnityGain / 2 ? 0 : -1)) {}
  Vec operator()(Vec x) const { return R::add16(R::mulHigh16(x, factor), R::bitAnd(x, kept)); }

  Vec factor;
  Vec kept;
};

/// A master gain above 1.0, whose products are limited.
template <typename R>
struct GainAboveOne {
  using Vec = typename R::Integers;

  explicit GainAboveOne(std::int32_t gain) : factor(R::all16(static_cast<std::int16_t>(gain))) {}
  Vec operator()(Vec x) const { return limitedLow<R>(productsShifted14<R>(x, factor)); }

  Vec factor;
};

/// Soft knee and make-up gain.
template <typename R>
typename R::Integers shape(typename R::Integers x) {
  const auto k = R::subLimitedUnsigned16(R::abs16(x), R::all16(kOutputKnee));
  const auto square = R::mulHighUnsigned16(R::add16(k, k), k);
  const auto y = R::mulHighUnsigned16(R::add16(square, square), k);
  const auto bent = R::sub16(x, R::withSignOfSame16(y, x));
  return R::add16(bent, R::mulHigh16(bent, R::all16(2 * kOutputMakeUp)));
}

/// Renders all samples if they fill a vector, and returns their number. The last vector overlaps the one before.
template <typename R, typename Gain>
int renderVectors(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, Gain gain) {
  constexpr int kSamples = R::kBytes / sizeof(std::int16_t);
  const auto renderAt = [&](int i) {
    const auto sum = wet == nullptr ? R::load(dry + i) : R::addLimited16(R::load(dry + i), R::load(wet + i));
    storeSamples<R>(out + i, shape<R>(gain(limitedLow<R>(sum))));
  };
  if (frames < kSamples) {
    return 0;
  }
  for (int i = 0; i < frames - kSamples; i += kSamples) {
    renderAt(i);
  }
  renderAt(frames - kSamples);
  return frames;
}

template <typename R>
void renderLanes(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, std::int32_t gain) {
  int i = gain <= kUnityGain ? renderVectors<R>(dry, wet, out, frames, GainToOne<R>(gain))
                             : renderVectors<R>(dry, wet, out, frames, GainAboveOne<R>(gain));
  for (; i < frames; ++i) {
    out[i] = outputSample(dry[i], wet == nullptr ? 0 : wet[i], gain);
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
