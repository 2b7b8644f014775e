// The run of both compressors on eight samples of both channels. ChannelPairs.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/dynamics/CompressorStep.h"
#include "effects/interfaces/ChannelPairs.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// The differences of the next samples, shifted left by `kShift` bits. Sets `previous`, which is shifted too, to the
/// last sample.
template <int kShift>
Words256 differences(const std::int16_t* samples, std::int64_t& previous) {
  const HalfRegisters::Integers now = HalfRegisters::load(samples);
  const auto first = static_cast<std::int16_t>(previous >> kShift);
  const Words256 before{WideRegisters::widened16(HalfRegisters::after16(now, first))};
  previous = std::int64_t{samples[kPairs - 1]} * (1 << kShift);
  return {WideRegisters::shiftLeft32<kShift>((Words256{WideRegisters::widened16(now)} - before).v)};
}

/// Each sample depends on the one before it. Sets `highpass` to the last one.
inline BothChannels blockedSamples(const BothChannels& steps, Pair& highpass) {
  const Pair kept = Pair::both(CompressorGain::DcBlock::kKept);
  SamplePairs pairs(steps);
  for (Pair& pair : pairs.pairs) {
    highpass = dcBlocked(highpass, pair, kept);
    pair = highpass;
  }
  return pairs.channels();
}

/// The gains after each of the next samples.
inline Words256 followGains(CompressorGain& law, const BothChannels& blocked, std::int32_t attack) {
  std::int32_t values[kPairs];
  larger(magnitude(blocked.left), magnitude(blocked.right)).store(values);
  for (std::int32_t& value : values) {
    law.follow(value, attack);
    value = law.gain;
  }
  return Words256::load(values);
}

/// The DC blocks run one register ahead: DC blocks and gain each depend on their own last sample, so the processor can
/// compute both at once.
template <typename Output, typename Law>
[[gnu::flatten]] unsigned runCompressor(Law& law, std::int16_t* left, std::int16_t* right,
                                        unsigned count) SIVRAY_NONBLOCKING {
  const unsigned whole = count - count % kPairs;
  if (whole == 0) {
    return 0;
  }
  CompressorGain now = law.law;
  Pair highpass = Pair::of(static_cast<std::int32_t>(now.left.highpass), static_cast<std::int32_t>(now.right.highpass));
  const auto blockedAt = [&](unsigned at) {
    return blockedSamples({differences<Output::kInputShift>(left + at, now.left.previousInput),
                           differences<Output::kInputShift>(right + at, now.right.previousInput)},
                          highpass);
  };
  BothChannels next = blockedAt(0);
  for (unsigned done = 0; done < whole; done += kPairs) {
    const BothChannels blocked = next;
    if (done + kPairs < whole) {
      next = blockedAt(done + kPairs);
    }
    const Words256 scales = Output::scale(followGains(now, blocked, law.attack), law.sens.value());
    Output::sound(blocked.left, scales).store(left + done);
    Output::sound(blocked.right, scales).store(right + done);
  }
  now.left.highpass = highpass.left();
  now.right.highpass = highpass.right();
  law.law = now;
  return whole;
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
