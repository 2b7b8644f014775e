// Both compressors on eight consecutive samples at once, for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstdint>

#include "core/FixedPoint.h"
#include "core/VectorCode.h"
#include "effects/dynamics/SivrayFxCompressor.h"
#include "effects/dynamics/SivrayFxStereoCompressor.h"
#include "effects/interfaces/SampleLanes.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/ChannelPairsAvx2.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// The next samples less the ones before them, raised by `kShift` bits. Moves `previous`, which is raised too, to the
/// last one.
template <int kShift>
__m256i differences(const std::int16_t* samples, std::int64_t& previous) {
  const __m128i now = _mm_loadu_si128(reinterpret_cast<const __m128i*>(samples));
  const __m128i before = _mm_insert_epi16(_mm_slli_si128(now, 2), static_cast<std::int16_t>(previous >> kShift), 0);
  previous = std::int64_t{samples[kPairs - 1]} * (1 << kShift);
  return _mm256_slli_epi32(_mm256_sub_epi32(_mm256_cvtepi16_epi32(now), _mm256_cvtepi16_epi32(before)), kShift);
}

__m128i leak(__m128i v) { return _mm_sub_epi32(_mm_srai_epi32(v, 14), v); }

/// As CompressorGain::DcBlock, for both channels. Each sample waits for the one before it.
BothChannels block(const BothChannels& steps, __m128i& highpass) {
  const __m128i kept = _mm_set1_epi32(CompressorGain::DcBlock::kKept);
  const __m128i limit = _mm_set1_epi32(CompressorGain::DcBlock::kLimit);
  const __m128i lowest = _mm_set1_epi32(-CompressorGain::DcBlock::kLimit);
  SamplePairs pairs(steps);
  for (__m128i& pair : pairs.pairs) {
    const __m128i decayed = leak(leak(_mm_srli_epi64(_mm_mul_epi32(highpass, kept), 15)));
    // The step is limited in place of the sum, which could take 33 bits.
    const __m128i step = _mm_min_epi32(pair, _mm_sub_epi32(limit, decayed));
    highpass = _mm_add_epi32(decayed, _mm_max_epi32(step, _mm_sub_epi32(lowest, decayed)));
    pair = highpass;
  }
  return pairs.channels();
}

/// The gains after each of the next samples.
__m256i followGains(CompressorGain& law, const BothChannels& blocked, std::int32_t attack) {
  std::int32_t values[kPairs];
  auto* const words = reinterpret_cast<__m256i*>(values);
  _mm256_storeu_si256(words, _mm256_max_epi32(_mm256_abs_epi32(blocked.left), _mm256_abs_epi32(blocked.right)));
  for (std::int32_t& value : values) {
    law.follow(value, attack);
    value = law.gain;
  }
  return _mm256_loadu_si256(words);
}

struct SingleForm {
  static constexpr int kInputShift = 14;

  static __m256i scales(__m256i gains, std::int32_t sens) {
    return timesShifted<15>(gains, _mm256_set1_epi32(sens * static_cast<std::int32_t>(CompressorLaw::kMakeUp)));
  }
  static __m128i sound(__m256i blocked, __m256i scales) { return limitedSamples(timesShifted<25>(blocked, scales)); }
};

struct MasterForm {
  static constexpr int kInputShift = 15;

  static __m256i scales(__m256i gains, std::int32_t sens) { return timesShifted<13>(gains, _mm256_set1_epi32(sens)); }
  static __m128i sound(__m256i blocked, __m256i scales) {
    const Samples128::Gain output(SivrayFxStereoCompressor::StereoCompressorImpl::kOutput);
    return mul15(Samples128{limitedSamples(timesShifted<24>(blocked, scales))}, output).v;
  }
};

/// The DC blocks are a register ahead: they and the gain wait for their own last samples, so that the processor
/// computes both at once.
template <typename Form, typename Law>
[[gnu::flatten]] unsigned run(Law& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  const unsigned whole = count - count % kPairs;
  if (whole == 0) {
    return 0;
  }
  CompressorGain now = law.law;
  __m128i highpass = _mm_set_epi64x(now.right.highpass, now.left.highpass);
  const auto blockAt = [&](unsigned at) {
    return block({differences<Form::kInputShift>(left + at, now.left.previousInput),
                  differences<Form::kInputShift>(right + at, now.right.previousInput)},
                 highpass);
  };
  BothChannels next = blockAt(0);
  for (unsigned done = 0; done < whole; done += kPairs) {
    const BothChannels blocked = next;
    if (done + kPairs < whole) {
      next = blockAt(done + kPairs);
    }
    const __m256i scales = Form::scales(followGains(now, blocked, law.attack), law.sens.value());
    _mm_storeu_si128(reinterpret_cast<__m128i*>(left + done), Form::sound(blocked.left, scales));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(right + done), Form::sound(blocked.right, scales));
  }
  now.left.highpass = _mm_cvtsi128_si32(highpass);
  now.right.highpass = _mm_extract_epi32(highpass, 2);
  law.law = now;
  return whole;
}

}  // namespace

unsigned CompressorLaw::runAvx2(CompressorLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return run<SingleForm>(law, left, right, count);
}

unsigned SivrayFxStereoCompressor::StereoCompressorImpl::runAvx2(StereoCompressorImpl& law, std::int16_t* left,
                                                                 std::int16_t* right, unsigned count) {
  return run<MasterForm>(law, left, right, count);
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
