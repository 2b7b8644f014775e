// The resampler's kernel for SSE2, which every 64-bit processor has: four lanes for each of the four dot products.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "host/resample/ResampleKernelRun.h"
#include "host/resample/ResampleKernelSets.h"

namespace tesh::bramel::vst {

namespace {

struct DotsSse2 {
  template <std::size_t Groups>
  static void frame(const TablePair* tables, const float* left, const float* right, std::size_t groups, float alpha,
                    float* outLeft, float* outRight) {
    __m128 leftPhase = _mm_setzero_ps();
    __m128 leftNext = _mm_setzero_ps();
    __m128 rightPhase = _mm_setzero_ps();
    __m128 rightNext = _mm_setzero_ps();
    for (std::size_t i = 0; i < (Groups != 0 ? Groups : groups); ++i) {
      const __m128 phase = _mm_load_ps(tables[i].phase.data());
      const __m128 next = _mm_load_ps(tables[i].next.data());
      const __m128 l = _mm_loadu_ps(left + 4 * i);
      const __m128 r = _mm_loadu_ps(right + 4 * i);
      leftPhase = _mm_add_ps(leftPhase, _mm_mul_ps(phase, l));
      leftNext = _mm_add_ps(leftNext, _mm_mul_ps(next, l));
      rightPhase = _mm_add_ps(rightPhase, _mm_mul_ps(phase, r));
      rightNext = _mm_add_ps(rightNext, _mm_mul_ps(next, r));
    }
    _MM_TRANSPOSE4_PS(leftPhase, leftNext, rightPhase, rightNext);
    const __m128 sums = _mm_add_ps(_mm_add_ps(leftPhase, leftNext), _mm_add_ps(rightPhase, rightNext));
    const float rest = 1.0F - alpha;
    const __m128 weighted = _mm_mul_ps(sums, _mm_setr_ps(rest, alpha, rest, alpha));
    const __m128 made = _mm_add_ps(weighted, _mm_shuffle_ps(weighted, weighted, _MM_SHUFFLE(3, 3, 1, 1)));
    _mm_store_ss(outLeft, made);
    _mm_store_ss(outRight, _mm_movehl_ps(made, made));
  }
};

}  // namespace

std::size_t runResampleSse2(const ResampleRun& run, ResamplePosition& position) {
  return runResample<DotsSse2>(run, position);
}

}  // namespace tesh::bramel::vst
