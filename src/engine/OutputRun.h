// The output stage over many samples of a channel, as templates over the lanes of an instruction set. Each kernel's
// source file includes it and compiles it for its own set, so everything here has internal linkage.
//
// All values fit words of 16 bits, and (a * b) >> 15 is the high word of 2a * b.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "engine/OutputStage.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// A master gain of at most 1.0: (g * x) >> 14 is the high word of `factor` * x, plus x where `kept` is -1.
template <typename L>
struct GainToOne {
  using Vec = typename L::Vec;

  explicit GainToOne(std::int32_t gain)
      : factor(L::all(static_cast<std::int16_t>(4 * gain))), kept(L::all(gain < kUnityGain / 2 ? 0 : -1)) {}
  Vec operator()(Vec x) const { return L::add(L::highProducts(x, factor), L::bitAnd(x, kept)); }

  Vec factor;
  Vec kept;
};

/// A master gain above 1.0, whose products are limited.
template <typename L>
struct GainAboveOne {
  using Vec = typename L::Vec;

  explicit GainAboveOne(std::int32_t gain) : factor(L::all(static_cast<std::int16_t>(gain))) {}
  Vec operator()(Vec x) const { return L::limitedLow(L::productsShifted14(x, factor)); }

  Vec factor;
};

/// Soft knee and make-up gain.
template <typename L>
typename L::Vec shape(typename L::Vec x) {
  const auto k = L::excess(L::magnitudes(x), L::all(kOutputKnee));
  const auto square = L::highUnsignedProducts(L::add(k, k), k);
  const auto y = L::highUnsignedProducts(L::add(square, square), k);
  const auto bent = L::sub(x, L::withSignOf(y, x));
  return L::add(bent, L::highProducts(bent, L::all(2 * kOutputMakeUp)));
}

/// Renders whole vectors of samples and returns their number.
template <typename L, typename Gain>
int renderVectors(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, Gain gain) {
  int i = 0;
  for (; i + L::kCount <= frames; i += L::kCount) {
    const auto sum = wet == nullptr ? L::load(dry + i) : L::addLimited(L::load(dry + i), L::load(wet + i));
    L::storeFloats(out + i, shape<L>(gain(L::limitedLow(sum))));
  }
  return i;
}

template <typename L>
void renderLanes(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, std::int32_t gain) {
  int i = gain <= kUnityGain ? renderVectors<L>(dry, wet, out, frames, GainToOne<L>(gain))
                             : renderVectors<L>(dry, wet, out, frames, GainAboveOne<L>(gain));
  for (; i < frames; ++i) {
    out[i] = outputSample(dry[i], wet == nullptr ? 0 : wet[i], gain);
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
