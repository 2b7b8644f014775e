// The buses of a block, separated eight frames at a time, and the choice of a kernel for the output stage.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/OutputStage.h"

#include <emmintrin.h>

#include <algorithm>
#include <array>

namespace tesh::bramel::plugin::sivray {
namespace {

using platform::VectorSet;

constexpr std::array<OutputKernel, 2> kKernels{
    {{"SSE2", VectorSet::baseline, renderOutputSse2}, {"AVX2", VectorSet::avx2, renderOutputAvx2}}};

constexpr int kLanes = 8;

void store(std::int16_t* to, __m128i words) { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), words); }

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

std::span<const OutputKernel> outputKernels() { return kKernels; }

const OutputKernel& bestOutputKernel() { return platform::bestKernel(kKernels); }

}  // namespace tesh::bramel::plugin::sivray
