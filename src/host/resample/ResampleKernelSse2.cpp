// The resampler's kernel for SSE2, which every 64-bit processor has: four lanes hold two frames of two channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "host/resample/ResampleKernelRun.h"
#include "host/resample/ResampleKernelSets.h"

namespace tesh::bramel::vst {

namespace {

struct DotsSse2 {
  template <std::size_t Groups>
  static void frame(const TapGroup* tables, const float* window, std::size_t groups, std::int32_t units, float* outLeft,
                    float* outRight) {
    __m128 phaseEarly = _mm_setzero_ps();  // Lanes 0 and 1, each left and right.
    __m128 phaseLate = _mm_setzero_ps();   // Lanes 2 and 3.
    __m128 nextEarly = _mm_setzero_ps();
    __m128 nextLate = _mm_setzero_ps();
    for (std::size_t i = 0; i < (Groups != 0 ? Groups : groups); ++i) {
      const __m128 early = _mm_loadu_ps(window + 8 * i);
      const __m128 late = _mm_loadu_ps(window + 8 * i + 4);
      phaseEarly = _mm_add_ps(phaseEarly, _mm_mul_ps(_mm_load_ps(tables[i].phase.data()), early));
      phaseLate = _mm_add_ps(phaseLate, _mm_mul_ps(_mm_load_ps(tables[i].phase.data() + 4), late));
      nextEarly = _mm_add_ps(nextEarly, _mm_mul_ps(_mm_load_ps(tables[i].next.data()), early));
      nextLate = _mm_add_ps(nextLate, _mm_mul_ps(_mm_load_ps(tables[i].next.data() + 4), late));
    }
    const __m128 sums = _mm_add_ps(sumOfBoth(phaseEarly, nextEarly), sumOfBoth(phaseLate, nextLate));
    const __m128 weights = _mm_add_ps(_mm_setr_ps(1.0F, 1.0F, 0.0F, 0.0F),
                                      _mm_mul_ps(_mm_setr_ps(-kPhaseScale, -kPhaseScale, kPhaseScale, kPhaseScale),
                                                 _mm_cvtepi32_ps(_mm_set1_epi32(units))));
    const __m128 weighted = _mm_mul_ps(sums, weights);
    const __m128 made = _mm_add_ps(weighted, _mm_movehl_ps(weighted, weighted));
    _mm_store_ss(outLeft, made);
    _mm_store_ss(outRight, _mm_shuffle_ps(made, made, _MM_SHUFFLE(1, 1, 1, 1)));
  }

  /// The sum of both lanes: left and right of the phase, left and right of the next.
  static __m128 sumOfBoth(__m128 phase, __m128 next) {
    return _mm_add_ps(_mm_movelh_ps(phase, next), _mm_movehl_ps(next, phase));
  }
};

}  // namespace

std::size_t runResampleSse2(const ResampleRun& run, ResamplePosition& position) {
  return runResample<DotsSse2>(run, position);
}

}  // namespace tesh::bramel::vst
