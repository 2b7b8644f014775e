// The runs of pump, compressors, drive and tube stage for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstring>

#include "core/VectorCode.h"
#include "effects/dynamics/Kilnode.h"
#include "effects/dynamics/Pump.h"
#include "effects/dynamics/Q60393Drive.h"
#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/dynamics/SivrayFxStereoCompressor.h"
#include "effects/interfaces/OneSample.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/dynamics/CompressorStep.h"
#include "effects/dynamics/DriveStep.h"
#include "effects/dynamics/PumpStep.h"
#include "effects/dynamics/TubeCurve.h"
#include "effects/interfaces/ChannelPairs.h"
#include "effects/interfaces/SerialRun.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// The next samples less the ones before them, raised by `kShift` bits. Moves `previous`, which is raised too, to the
/// last one.
template <int kShift>
Words256 differences(const std::int16_t* samples, std::int64_t& previous) {
  const HalfRegisters::Integers now = HalfRegisters::load(samples);
  const auto first = static_cast<std::int16_t>(previous >> kShift);
  const Words256 before{WideRegisters::widened16(HalfRegisters::after16(now, first))};
  previous = std::int64_t{samples[kPairs - 1]} * (1 << kShift);
  return {WideRegisters::shiftLeft32<kShift>((Words256{WideRegisters::widened16(now)} - before).v)};
}

/// Each sample waits for the one before it. Moves `highpass` to the last one.
BothChannels blockedSamples(const BothChannels& steps, Pair& highpass) {
  const Pair kept = Pair::both(CompressorGain::DcBlock::kKept);
  SamplePairs pairs(steps);
  for (Pair& pair : pairs.pairs) {
    highpass = dcBlocked(highpass, pair, kept);
    pair = highpass;
  }
  return pairs.channels();
}

/// The gains after each of the next samples.
Words256 followGains(CompressorGain& law, const BothChannels& blocked, std::int32_t attack) {
  std::int32_t values[kPairs];
  larger(magnitude(blocked.left), magnitude(blocked.right)).store(values);
  for (std::int32_t& value : values) {
    law.follow(value, attack);
    value = law.gain;
  }
  return Words256::load(values);
}

/// The DC blocks are a register ahead: they and the gain wait for their own last samples, so that the processor
/// computes both at once.
template <typename Output, typename Law>
[[gnu::flatten]] unsigned runCompressor(Law& law, std::int16_t* left, std::int16_t* right, unsigned count) {
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

unsigned CompressorLaw::runAvx2(CompressorLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runCompressor<CompressorOutput>(law, left, right, count);
}

unsigned SivrayFxStereoCompressor::StereoCompressorImpl::runAvx2(StereoCompressorImpl& law, std::int16_t* left,
                                                                 std::int16_t* right, unsigned count) {
  return runCompressor<MasterOutput>(law, left, right, count);
}

unsigned Pump::runAvx2(Pump& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runBeat<Samples256>(law, left, right, count);
}

/// Limits and magnitudes take a step each.
unsigned Q60393Drive::runAvx2(Q60393Drive& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runSerially(law, left, right, count, [](Q60393Drive& now, std::int16_t& l, std::int16_t& r) {
    stepDrive<cofu::registers::Registers128Sse41>(now, l, r);
  });
}

}  // namespace tesh::bramel::plugin::sivray::effects

namespace tesh::bramel::plugin::fxkit {
namespace {

/// As OneValue, for four at once.
struct FourValues {
  using Floats = float __attribute__((vector_size(16)));
  using Words = std::int32_t __attribute__((vector_size(16)));
  using Doubles = double __attribute__((vector_size(32)));
  using Longs = std::uint64_t __attribute__((vector_size(32)));

  static Doubles widened(Floats x) { return __builtin_convertvector(x, Doubles); }
  static Floats narrowed(Doubles x) { return __builtin_convertvector(x, Floats); }
  template <typename To, typename From>
  static To as(From x) {
    return reinterpret_cast<To>(x);
  }
  static Floats load(const float* values) {
    Floats four;
    std::memcpy(&four, values, sizeof(four));
    return four;
  }
};

}  // namespace

[[gnu::flatten]] void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) {
  using Four = FourValues;
  for (unsigned i = 0; i < count; i += 4) {
    const Four::Floats sound = tube<Four>(Four::load(samples + i), Four::load(drives + i), Four::load(mixes + i));
    std::memcpy(samples + i, &sound, sizeof(sound));
  }
}

}  // namespace tesh::bramel::plugin::fxkit

SIVRAY_COMPILE_FOR_ALL
