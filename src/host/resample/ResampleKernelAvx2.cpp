// The resampler's kernel for AVX2: eight lanes hold four frames of two channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "core/VectorCode.h"
#include "host/resample/ResampleKernelSets.h"

SIVRAY_COMPILE_FOR("avx2")

#include "host/resample/ResampleKernelRun.h"

namespace tesh::bramel::vst {

namespace {

struct DotsAvx2 {
  template <std::size_t Groups>
  static void frame(const TapGroup* tables, const float* window, std::size_t groups, std::int32_t units, float* outLeft,
                    float* outRight) {
    __m256 phase = _mm256_setzero_ps();
    __m256 next = _mm256_setzero_ps();
    for (std::size_t i = 0; i < (Groups != 0 ? Groups : groups); ++i) {
      const __m256 frames = _mm256_loadu_ps(window + 8 * i);
      phase = _mm256_add_ps(phase, _mm256_mul_ps(frames, _mm256_load_ps(tables[i].phase.data())));
      next = _mm256_add_ps(next, _mm256_mul_ps(frames, _mm256_load_ps(tables[i].next.data())));
    }
    // Lanes 0 and 2, then 1 and 3: left and right of the phase below, left and right of the next above.
    const __m256d even = _mm256_unpacklo_pd(_mm256_castps_pd(phase), _mm256_castps_pd(next));
    const __m256d odd = _mm256_unpackhi_pd(_mm256_castps_pd(phase), _mm256_castps_pd(next));
    const __m256 halfSums = _mm256_add_ps(_mm256_castpd_ps(even), _mm256_castpd_ps(odd));
    const __m128 sums = _mm_add_ps(_mm256_castps256_ps128(halfSums), _mm256_extractf128_ps(halfSums, 1));
    const __m128 weights = _mm_add_ps(_mm_setr_ps(1.0F, 1.0F, 0.0F, 0.0F),
                                      _mm_mul_ps(_mm_setr_ps(-kPhaseScale, -kPhaseScale, kPhaseScale, kPhaseScale),
                                                 _mm_cvtepi32_ps(_mm_set1_epi32(units))));
    const __m128 weighted = _mm_mul_ps(sums, weights);
    const __m128 made = _mm_add_ps(weighted, _mm_movehl_ps(weighted, weighted));
    _mm_store_ss(outLeft, made);
    _mm_store_ss(outRight, _mm_movehdup_ps(made));
  }
};

}  // namespace

std::size_t runResampleAvx2(const ResampleRun& run, ResamplePosition& position) {
  return runResample<DotsAvx2>(run, position);
}

}  // namespace tesh::bramel::vst

SIVRAY_COMPILE_FOR_ALL
