// Eight consecutive samples of both channels in 32 bits, as words of each channel or as a stereo pair for each sample,
// for laws where a sample depends on the one before it. SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/SampleLanes.h"
#include "effects/interfaces/StereoLanes.h"
#include "effects/interfaces/WordLanes.h"
#include "registers/Registers256.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace lanes {

template <typename R>
SamplesIn<typename R::Half> saturatedSamples(WordsIn<R> words) {
  return SamplesIn<typename R::Half>::limited(R::narrowed32(words.v));
}

}  // namespace lanes

namespace {

using WideRegisters = cofu::registers::Registers256;
using HalfRegisters = WideRegisters::Half;

using Words256 = lanes::WordsIn<WideRegisters>;
using Pair = StereoIn<HalfRegisters>;

inline constexpr unsigned kPairs = Words256::kCount;

/// Eight words of each channel, one a sample.
struct BothChannels {
  Words256 left;
  Words256 right;
};

/// The same as one stereo pair per sample.
struct SamplePairs {
  explicit SamplePairs(const BothChannels& channels) {
    using R = WideRegisters;
    const R::Integers outer = R::zipLow64(channels.left.v, channels.right.v);
    const R::Integers inner = R::zipHigh64(channels.left.v, channels.right.v);
    const HalfRegisters::Integers twos[]{R::lower(outer), R::lower(inner), R::upper(outer), R::upper(inner)};
    for (unsigned i = 0; i < kPairs / 2; ++i) {
      pairs[2 * i] = twos[i];
      pairs[2 * i + 1] = HalfRegisters::shiftRightUnsigned64<32>(twos[i]);
    }
  }

  BothChannels channels() const {
    using R = WideRegisters;
    HalfRegisters::Integers twos[kPairs / 2];
    for (unsigned i = 0; i < kPairs / 2; ++i) {
      const HalfRegisters::Integers later = HalfRegisters::shiftLeft64<32>(pairs[2 * i + 1].v);
      twos[i] = HalfRegisters::eitherOf32<0b1010>(pairs[2 * i].v, later);
    }
    const R::Integers outer = R::joined(twos[0], twos[2]);
    const R::Integers inner = R::joined(twos[1], twos[3]);
    return {{R::zipLow64(outer, inner)}, {R::zipHigh64(outer, inner)}};
  }

  Pair pairs[kPairs];
};

/// Eight samples, shifted left by `kBits`.
template <int kBits>
Words256 raised(const std::int16_t* samples) {
  const WideRegisters::Integers words = WideRegisters::widened16(HalfRegisters::load(samples));
  return {WideRegisters::shiftLeft32<kBits>(words)};
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
