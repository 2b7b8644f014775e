// The output stage over a block, eight samples at a time. All its values fit 16 bits, and (a * b) >> 15 is the high
// word of 2a * b. The last samples of a block, fewer than eight, use the functions for single samples.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

#include <emmintrin.h>

#include <algorithm>

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr int kLanes = 8;

__m128i load(const std::int16_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); }

void store(std::int16_t* to, __m128i words) { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), words); }

__m128i all(std::int32_t word) { return _mm_set1_epi16(static_cast<std::int16_t>(word)); }

/// Limits -32768, which 16 bits can hold, to the engine's lowest sample value, -32767.
__m128i withoutLowest(__m128i x) { return _mm_max_epi16(x, all(-cofu::core::kFullScale)); }

/// The four channels of a frame and of the next one, as eight words.
__m128i twoFrames(const std::int32_t* mix) {
  const auto* const frames = reinterpret_cast<const __m128i*>(mix);
  return _mm_packs_epi32(_mm_load_si128(frames), _mm_load_si128(frames + 1));
}

/// The dry channels of four frames, left in the lower half and right in the upper.
__m128i fourDryFrames(const std::int32_t* mix) {
  const auto* const frames = reinterpret_cast<const __m128i*>(mix);
  const __m128i first = _mm_unpacklo_epi32(_mm_load_si128(frames), _mm_load_si128(frames + 1));
  const __m128i second = _mm_unpacklo_epi32(_mm_load_si128(frames + 2), _mm_load_si128(frames + 3));
  const __m128i left = _mm_unpacklo_epi64(first, second);
  return _mm_packs_epi32(left, _mm_unpackhi_epi64(first, second));
}

/// Four frames with the words of each channel together: left in the lower half of each vector, right in the upper.
struct FourFrames {
  __m128i dry;
  __m128i wet;

  explicit FourFrames(const std::int32_t* mix) {
    const __m128i first = twoFrames(mix);
    const __m128i second = twoFrames(mix + 8);
    const __m128i even = _mm_unpacklo_epi16(first, second);
    const __m128i odd = _mm_unpackhi_epi16(first, second);
    dry = _mm_unpacklo_epi16(even, odd);
    wet = _mm_unpackhi_epi16(even, odd);
  }
};

std::int16_t wordOf(std::int32_t x) { return static_cast<std::int16_t>(std::clamp(x, -32768, 32767)); }

__m128i shape(__m128i sample, __m128i gain) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i low = _mm_srai_epi32(_mm_madd_epi16(_mm_unpacklo_epi16(sample, zero), gain), 14);
  const __m128i high = _mm_srai_epi32(_mm_madd_epi16(_mm_unpackhi_epi16(sample, zero), gain), 14);
  const __m128i x = withoutLowest(_mm_packs_epi32(low, high));
  const __m128i magnitude = _mm_max_epi16(x, _mm_sub_epi16(zero, x));
  const __m128i k = _mm_subs_epu16(magnitude, all(kOutputKnee));
  const __m128i square = _mm_mulhi_epu16(_mm_add_epi16(k, k), k);
  const __m128i y = _mm_mulhi_epu16(_mm_add_epi16(square, square), k);
  const __m128i sign = _mm_srai_epi16(x, 15);
  const __m128i bent = _mm_sub_epi16(_mm_xor_si128(_mm_sub_epi16(magnitude, y), sign), sign);
  return _mm_add_epi16(bent, _mm_mulhi_epi16(bent, all(2 * kOutputMakeUp)));
}

/// Stores samples that lie in the high words of the lanes. All steps are exact, so the lanes need no shift.
void storeFloats(float* to, __m128i lanes) {
  _mm_storeu_ps(to, _mm_mul_ps(_mm_cvtepi32_ps(lanes), _mm_set1_ps(kFloatScale / 65536.0F)));
}

/// The whole stage for eight samples of both buses' sum.
void storeShaped(float* to, __m128i sum, __m128i gain) {
  const __m128i shaped = shape(withoutLowest(sum), gain);
  storeFloats(to, _mm_unpacklo_epi16(_mm_setzero_si128(), shaped));
  storeFloats(to + 4, _mm_unpackhi_epi16(_mm_setzero_si128(), shaped));
}

}  // namespace

void splitBuses(const std::int32_t* mix, BusSamples dry, BusSamples wet, int frames) {
  int i = 0;
  for (; i + kLanes <= frames; i += kLanes) {
    const FourFrames first(mix + 4 * i);
    const FourFrames second(mix + 4 * i + 16);
    store(dry.left + i, _mm_unpacklo_epi64(first.dry, second.dry));
    store(dry.right + i, _mm_unpackhi_epi64(first.dry, second.dry));
    store(wet.left + i, _mm_unpacklo_epi64(first.wet, second.wet));
    store(wet.right + i, _mm_unpackhi_epi64(first.wet, second.wet));
  }
  for (; i < frames; ++i) {
    dry.left[i] = wordOf(mix[4 * i]);
    dry.right[i] = wordOf(mix[4 * i + 1]);
    wet.left[i] = wordOf(mix[4 * i + 2]);
    wet.right[i] = wordOf(mix[4 * i + 3]);
  }
}

void splitDry(const std::int32_t* mix, BusSamples dry, int frames) {
  int i = 0;
  for (; i + kLanes <= frames; i += kLanes) {
    const __m128i first = fourDryFrames(mix + 4 * i);
    const __m128i second = fourDryFrames(mix + 4 * i + 16);
    store(dry.left + i, _mm_unpacklo_epi64(first, second));
    store(dry.right + i, _mm_unpackhi_epi64(first, second));
  }
  for (; i < frames; ++i) {
    dry.left[i] = wordOf(mix[4 * i]);
    dry.right[i] = wordOf(mix[4 * i + 1]);
  }
}

void clearBuses(BusSamples dry, BusSamples wet, int frames) {
  for (std::int16_t* const channel : {dry.left, dry.right, wet.left, wet.right}) {
    std::fill_n(channel, frames, std::int16_t{0});
  }
}

void renderOutput(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, std::int32_t gain) {
  int i = 0;
  for (; i + kLanes <= frames; i += kLanes) {
    const __m128i sum = wet == nullptr ? load(dry + i) : _mm_adds_epi16(load(dry + i), load(wet + i));
    storeShaped(out + i, sum, all(gain));
  }
  for (; i < frames; ++i) {
    out[i] = outputSample(dry[i], wet == nullptr ? 0 : wet[i], gain);
  }
}

}  // namespace tesh::bramel::plugin::sivray
