// The output stage over many frames, as templates over the registers of an instruction set. Each kernel's source file
// includes it and compiles it for its own set, so everything here has internal linkage.
//
// Samples of left and right alternate. All values fit 16-bit words, and (a * b) >> 15 is the high word of 2a * b.
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

/// The words are in the high halves of 32-bit lanes, so no shift is needed. All steps to a float are exact.
template <typename R>
void storeFrames(OutputChannels out, int frame, typename R::Integers words) {
  const auto put = [](float* at, typename R::Integers uppers) {
    R::storeFloats(at, R::floatsOf(uppers) * R::allFloats(kFloatScale / 65536.0F));
  };
  put(out.left + frame, R::template shiftLeft32<16>(words));
  put(out.right + frame, R::bitAnd(words, R::all32(-65536)));
}

/// As many stereo frames as fill a register, left and right alternating.
template <typename R>
typename R::Integers framesOf(BusSamples channels, int frame) {
  if constexpr (requires { typename R::Half; }) {
    using Half = typename R::Half;
    const auto left = Half::load(channels.left + frame);
    const auto right = Half::load(channels.right + frame);
    return R::joined(Half::zipLow16(left, right), Half::zipHigh16(left, right));
  } else {
    return R::zipLow16(R::load64(channels.left + frame), R::load64(channels.right + frame));
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
  const auto bent = R::sub16(x, R::withSignOf16(y, x));
  return R::add16(bent, R::mulHigh16(bent, R::all16(2 * kOutputMakeUp)));
}

/// Renders all frames, if there are enough to fill a vector, and returns their number. The last vector may overlap the
/// one before.
template <typename R, typename Gain>
int renderVectors(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames, Gain gain) {
  constexpr int kFrames = R::kBytes / (2 * sizeof(std::int16_t));
  const auto renderAt = [&](int i) {
    typename R::Integers sum = R::load(dry + 2 * i);
    if (wet.left != nullptr) {
      sum = limitedLow<R>(R::addLimited16(sum, framesOf<R>(wet, i)));
    }
    storeFrames<R>(out, i, shape<R>(gain(sum)));
  };
  if (frames < kFrames) {
    return 0;
  }
  for (int i = 0; i < frames - kFrames; i += kFrames) {
    renderAt(i);
  }
  renderAt(frames - kFrames);
  return frames;
}

template <typename R>
void renderLanes(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames, std::int32_t gain) {
  int i = gain <= kUnityGain ? renderVectors<R>(dry, wet, out, frames, GainToOne<R>(gain))
                             : renderVectors<R>(dry, wet, out, frames, GainAboveOne<R>(gain));
  for (; i < frames; ++i) {
    const bool isWet = wet.left != nullptr;
    out.left[i] = outputSample(dry[2 * i], isWet ? wet.left[i] : 0, gain);
    out.right[i] = outputSample(dry[2 * i + 1], isWet ? wet.right[i] : 0, gain);
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
