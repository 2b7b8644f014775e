// The comb filter on eight consecutive samples at once, for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "core/FixedPoint.h"
#include "core/VectorCode.h"
#include "effects/filters/CombFilter.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/ChannelPairsAvx2.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

constexpr unsigned kLanes = CombFilter::kLanes;
static_assert(kLanes == kPairs);
constexpr std::size_t kMask = CombFilter::kLineLength - 1;

/// The eight values of a line from `at` on.
__m256i load(const std::int32_t* line, std::size_t at) {
  if (at <= CombFilter::kLineLength - kLanes) [[likely]] {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(line + at));
  }
  std::int32_t joined[kLanes];
  for (unsigned i = 0; i < kLanes; ++i) {
    joined[i] = line[(at + i) & kMask];
  }
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(joined));
}

void store(std::int32_t* line, std::size_t at, __m256i values) {
  if (at <= CombFilter::kLineLength - kLanes) [[likely]] {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(line + at), values);
    return;
  }
  std::int32_t separate[kLanes];
  std::memcpy(separate, &values, sizeof(values));
  for (unsigned i = 0; i < kLanes; ++i) {
    line[(at + i) & kMask] = separate[i];
  }
}

/// The delayed samples before each of the next eight, of which each waits for the one before it. Moves `output` to the
/// last one.
BothChannels interpolate(const BothChannels& near, const BothChannels& older, std::int32_t eta, __m128i& output) {
  const SamplePairs nearWhole({_mm256_srai_epi32(near.left, 15), _mm256_srai_epi32(near.right, 15)});
  SamplePairs delayed(older);
  const __m128i weight = _mm_set1_epi32(eta);
  const __m128i limit = _mm_set1_epi32(CombFilter::kOutputLimit);
  const __m128i lowest = _mm_set1_epi32(-CombFilter::kOutputLimit);
  for (unsigned i = 0; i < kLanes; ++i) {
    const __m128i before = output;
    const __m128i distance = _mm_sub_epi32(nearWhole.pairs[i], _mm_srai_epi32(before, 15));
    const __m128i correction = _mm_srai_epi32(_mm_mul_epu32(distance, weight), 15);
    output = _mm_max_epi32(_mm_min_epi32(_mm_add_epi32(correction, delayed.pairs[i]), limit), lowest);
    delayed.pairs[i] = before;
  }
  return delayed.channels();
}

/// Puts the next samples of a channel into its line and out.
void feed(std::int32_t* line, std::size_t write, __m256i back, std::int16_t* samples) {
  auto* const words = reinterpret_cast<__m128i*>(samples);
  const __m256i in = _mm256_slli_epi32(_mm256_cvtepi16_epi32(_mm_loadu_si128(words)), 15);
  const __m256i sound = _mm256_add_epi32(back, in);
  store(line, write, sound);
  _mm_storeu_si128(words, limitedSamples(_mm256_srai_epi32(sound, 15)));
}

}  // namespace

[[gnu::flatten]] unsigned CombFilter::runAvx2(CombFilter& law, std::int16_t* leftSamples, std::int16_t* rightSamples,
                                              unsigned count) {
  std::int32_t* const leftLine = law.left.line.data();
  std::int32_t* const rightLine = law.right.line.data();
  const __m256i feedback = _mm256_set1_epi32(static_cast<std::int32_t>(law.feedback));
  const auto eta = static_cast<std::int32_t>(law.eta);
  __m128i output = _mm_set_epi64x(law.right.output, law.left.output);
  unsigned done = 0;
  for (; done + kLanes <= count; done += kLanes) {
    const std::size_t older = (law.read - 1) & kMask;
    const BothChannels delayed = interpolate({load(leftLine, law.read), load(rightLine, law.read)},
                                             {load(leftLine, older), load(rightLine, older)}, eta, output);
    feed(leftLine, law.write, timesShifted<31>(delayed.left, feedback), leftSamples + done);
    feed(rightLine, law.write, timesShifted<31>(delayed.right, feedback), rightSamples + done);
    law.moveIndices(kLanes);
  }
  law.left.output = _mm_cvtsi128_si32(output);
  law.right.output = _mm_extract_epi32(output, 2);
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
