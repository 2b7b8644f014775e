// The law of both compressors around their gain: the DC blocks before it and the output stages after it, for one sample
// or several. SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <type_traits>

#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/interfaces/WordLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The output of a DC block after `highpass`, for an input that has changed by `step`. `kept` is DcBlock::kKept.
template <typename Words>
Words dcBlocked(Words highpass, Words step, Words kept) {
  using Block = CompressorGain::DcBlock;
  const Words decayed = leakTwice(signedProduct<Block::kKeptBits>(highpass, kept));
  return limitedSum(decayed, step, Block::kLimit);
}

/// The output for single sounds: a gain of up to five times the sensitivity.
struct CompressorOutput {
  static constexpr int kInputShift = 14;
  static constexpr std::int32_t kMakeUp = 5;

  template <typename Words>
  static Words scale(Words gain, std::int32_t sens) {
    return signedProduct<15>(gain, Words::all(sens * kMakeUp));
  }
  template <typename Words>
  static auto sound(Words blocked, Words scale) {
    return saturatedSamples(signedProduct<15 + 10>(blocked, scale));
  }
};

/// The output for a whole mix.
struct MasterOutput {
  static constexpr int kInputShift = 15;
  static constexpr std::int32_t kLevel = cofu::core::kFullScale;

  template <typename Words>
  static Words scale(Words gain, std::int32_t sens) {
    return signedProduct<13>(gain, Words::all(sens));
  }
  template <typename Words>
  static auto sound(Words blocked, Words scale) {
    const auto samples = saturatedSamples(signedProduct<15 + 9>(blocked, scale));
    return mul15(samples, typename std::remove_const_t<decltype(samples)>::Gain(kLevel));
  }
};

}  // namespace tesh::bramel::plugin::sivray::effects
