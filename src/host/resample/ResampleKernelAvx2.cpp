// The resampler's kernel for AVX2: eight lanes hold four taps of a phase and the same four of the next.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "host/resample/ResampleKernelSets.h"

// Code between these marks is compiled for AVX2. Inline functions that other files share must stay outside, as they
// have to run on every processor.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

#include "host/resample/ResampleKernelRun.h"

namespace tesh::bramel::vst {

namespace {

struct DotsAvx2 {
  template <std::size_t Groups>
  static void frame(const TablePair* tables, const float* left, const float* right, std::size_t groups, float alpha,
                    float* outLeft, float* outRight) {
    __m256 leftSums = _mm256_setzero_ps();
    __m256 rightSums = _mm256_setzero_ps();
    for (std::size_t i = 0; i < (Groups != 0 ? Groups : groups); ++i) {
      const __m256 pair = _mm256_load_ps(tables[i].phase.data());
      leftSums = _mm256_add_ps(leftSums, _mm256_mul_ps(pair, bothHalves(left + 4 * i)));
      rightSums = _mm256_add_ps(rightSums, _mm256_mul_ps(pair, bothHalves(right + 4 * i)));
    }
    const __m256 halfSums = _mm256_hadd_ps(leftSums, rightSums);
    const __m256 sums = _mm256_hadd_ps(halfSums, halfSums);  // Left, right of the phase below; of the next above.
    const __m128 phase = _mm_mul_ps(_mm256_castps256_ps128(sums), _mm_set1_ps(1.0F - alpha));
    const __m128 next = _mm_mul_ps(_mm256_extractf128_ps(sums, 1), _mm_set1_ps(alpha));
    const __m128 made = _mm_add_ps(phase, next);
    _mm_store_ss(outLeft, made);
    _mm_store_ss(outRight, _mm_movehdup_ps(made));
  }

  static __m256 bothHalves(const float* four) { return _mm256_broadcast_ps(reinterpret_cast<const __m128*>(four)); }
};

}  // namespace

std::size_t runResampleAvx2(const ResampleRun& run, ResamplePosition& position) {
  return runResample<DotsAvx2>(run, position);
}

}  // namespace tesh::bramel::vst

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
