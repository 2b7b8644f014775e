// The chorus/flanger on eight consecutive samples at once, for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstring>

#include "core/FixedPoint.h"
#include "core/VectorCode.h"
#include "effects/modulation/SivrayFxChorusFlanger.h"
#include "effects/modulation/TriangleLfo.h"

SIVRAY_COMPILE_FOR("avx2")

namespace tesh::bramel::plugin::sivray::effects {
namespace {

constexpr int kLanes = 8;
constexpr int kMask = ChorusFlangerLaw::Channel::kLineLength - 1;

/// Eight 32-bit values of each channel, one a sample.
struct BothChannels {
  __m256i left;
  __m256i right;
};

/// The smoothed triangles of a sample: left and right in the lower two lanes.
__m128i followed(__m128i triangles, __m128i follow) {
  const __m128i kept = _mm_sub_epi32(_mm_slli_epi32(follow, 8), follow);
  return _mm_srai_epi32(_mm_add_epi32(triangles, kept), 8);
}

/// Two samples, one after the other. Moves `follow` to the second.
__m128i followedTwice(__m128i triangles, __m128i& follow) {
  const __m128i first = followed(triangles, follow);
  follow = followed(_mm_unpackhi_epi64(triangles, triangles), first);
  return _mm_unpacklo_epi64(first, follow);
}

__m256i trianglesAt(__m256i phases) { return _mm256_srli_epi32(_mm256_abs_epi32(phases), 16); }

/// The smoothed triangles of the next eight samples. The smoothing is serial, with both channels side by side.
BothChannels follow(std::int32_t phase, std::int32_t step, __m128i& follow) {
  const __m256i steps = _mm256_mullo_epi32(_mm256_set1_epi32(step), _mm256_setr_epi32(1, 2, 3, 4, 5, 6, 7, 8));
  const __m256i phases = _mm256_add_epi32(_mm256_set1_epi32(phase), steps);
  const __m256i left = trianglesAt(phases);
  const __m256i right = trianglesAt(_mm256_add_epi32(phases, _mm256_set1_epi32(kRightPhaseLead)));
  // Samples 0, 1, 4 and 5, then 2, 3, 6 and 7.
  const __m256i outer = _mm256_unpacklo_epi32(left, right);
  const __m256i inner = _mm256_unpackhi_epi32(left, right);
  const __m128i first = followedTwice(_mm256_castsi256_si128(outer), follow);
  const __m128i second = followedTwice(_mm256_castsi256_si128(inner), follow);
  const __m128i third = followedTwice(_mm256_extracti128_si256(outer, 1), follow);
  const __m128i fourth = followedTwice(_mm256_extracti128_si256(inner, 1), follow);
  const __m256 even = _mm256_castsi256_ps(_mm256_set_m128i(third, first));
  const __m256 odd = _mm256_castsi256_ps(_mm256_set_m128i(fourth, second));
  return {_mm256_castps_si256(_mm256_shuffle_ps(even, odd, _MM_SHUFFLE(2, 0, 2, 0))),
          _mm256_castps_si256(_mm256_shuffle_ps(even, odd, _MM_SHUFFLE(3, 1, 3, 1)))};
}

__m256i delaysAt(__m256i follow) {
  const __m256i scaled = _mm256_madd_epi16(follow, _mm256_set1_epi32(ChorusFlangerLaw::kDelayPerTriangle));
  return _mm256_add_epi32(scaled, _mm256_set1_epi32(ChorusFlangerLaw::kLeastDelay));
}

/// Whether a delay ends inside the register that it is read for.
bool isTooShort(__m256i delays) {
  return _mm256_movemask_epi8(_mm256_cmpgt_epi32(_mm256_set1_epi32(kLanes << 16), delays)) != 0;
}

/// The sample at `index` in the lower half, the next one in the upper half.
int pairAt(const std::int16_t* line, int index) {
  int pair = 0;
  std::memcpy(&pair, line + static_cast<unsigned>(index), sizeof(pair));
  return pair;
}

__m256i pairsAt(const std::int16_t* line, __m256i indices) {
  const __m128i low = _mm256_castsi256_si128(indices);
  const __m128i high = _mm256_extracti128_si256(indices, 1);
  return _mm256_setr_epi32(pairAt(line, _mm_cvtsi128_si32(low)), pairAt(line, _mm_extract_epi32(low, 1)),
                           pairAt(line, _mm_extract_epi32(low, 2)), pairAt(line, _mm_extract_epi32(low, 3)),
                           pairAt(line, _mm_cvtsi128_si32(high)), pairAt(line, _mm_extract_epi32(high, 1)),
                           pairAt(line, _mm_extract_epi32(high, 2)), pairAt(line, _mm_extract_epi32(high, 3)));
}

__m256i leak(__m256i v) { return _mm256_sub_epi32(_mm256_srai_epi32(v, 14), v); }

/// The inverted taps. Between two samples far apart the product wraps, so that a tap may need 17 bits.
__m256i tapsAt(const std::int16_t* line, unsigned writeIndex, __m256i delays) {
  const __m256i ascending = _mm256_setr_epi32(-1, 0, 1, 2, 3, 4, 5, 6);
  const __m256i writes = _mm256_add_epi32(_mm256_set1_epi32(static_cast<int>(writeIndex)), ascending);
  const __m256i reads = _mm256_sub_epi32(writes, _mm256_srli_epi32(delays, 16));
  const __m256i pairs = pairsAt(line, _mm256_and_si256(reads, _mm256_set1_epi32(kMask)));
  const __m256i near = _mm256_srai_epi32(pairs, 16);
  const __m256i beyond = _mm256_srai_epi32(_mm256_slli_epi32(pairs, 16), 16);
  const __m256i fraction = _mm256_and_si256(delays, _mm256_set1_epi32(65535));
  const __m256i share = _mm256_srai_epi32(_mm256_mullo_epi32(_mm256_sub_epi32(beyond, near), fraction), 16);
  return leak(leak(leak(_mm256_add_epi32(near, share))));
}

void write(std::int16_t* line, unsigned writeIndex, __m128i words) {
  if (writeIndex + kLanes <= ChorusFlangerLaw::Channel::kLineLength) [[likely]] {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(line + writeIndex), words);
  } else {
    std::int16_t samples[kLanes];
    std::memcpy(samples, &words, sizeof(words));
    for (unsigned i = 0; i < kLanes; ++i) {
      line[(writeIndex + i) & kMask] = samples[i];
    }
  }
  line[ChorusFlangerLaw::Channel::kLineLength] = line[0];
}

/// `in` and a share (Q15) of the taps.
__m256i plusTaps(__m256i in, __m256i taps, std::int32_t gain) {
  return _mm256_add_epi32(in, _mm256_srai_epi32(_mm256_mullo_epi32(taps, _mm256_set1_epi32(gain)), 15));
}

void runChannel(const ChorusFlangerLaw& law, std::int16_t* line, __m256i delays, std::int16_t* samples) {
  const __m256i taps = tapsAt(line, law.writeIndex, delays);
  const __m256i in = _mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(samples)));
  const __m256i back = plusTaps(in, taps, law.feedback.value());
  const __m256i out = plusTaps(in, taps, law.wet.value());
  const __m256i mixed = _mm256_permute4x64_epi64(_mm256_packs_epi32(back, out), _MM_SHUFFLE(3, 1, 2, 0));
  const __m256i limited = _mm256_max_epi16(mixed, _mm256_set1_epi16(-cofu::core::kFullScale));
  write(line, law.writeIndex, _mm256_castsi256_si128(limited));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(samples), _mm256_extracti128_si256(limited, 1));
}

}  // namespace

/// Stops where a delay gets too short, at the foot of a triangle.
[[gnu::flatten]] unsigned ChorusFlangerLaw::runAvx2(ChorusFlangerLaw& law, std::int16_t* left, std::int16_t* right,
                                                    unsigned count) {
  __m128i now = _mm_setr_epi32(law.leftChannel.follow, law.rightChannel.follow, 0, 0);
  unsigned done = 0;
  for (; done + kLanes <= count; done += kLanes) {
    __m128i next = now;
    const BothChannels triangles = follow(law.phase, law.lfoStep, next);
    const BothChannels delays{delaysAt(triangles.left), delaysAt(triangles.right)};
    if (isTooShort(delays.left) || isTooShort(delays.right)) {
      break;
    }
    runChannel(law, law.leftChannel.line.data(), delays.left, left + done);
    runChannel(law, law.rightChannel.line.data(), delays.right, right + done);
    now = next;
    law.phase = cofu::core::wrapAdd(law.phase, cofu::core::wrapMul(law.lfoStep, kLanes));
    law.writeIndex = (law.writeIndex + kLanes) & kMask;
  }
  law.leftChannel.follow = _mm_cvtsi128_si32(now);
  law.rightChannel.follow = _mm_extract_epi32(now, 1);
  return done;
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
