// The output stage for AVX2: sixteen samples at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstdint>

#include "core/VectorCode.h"
#include "engine/OutputStage.h"

SIVRAY_COMPILE_FOR("avx2")

#include "engine/OutputRun.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// See OutputLanesSse2 for what each operation does.
struct OutputLanesAvx2 {
  using Vec = __m256i;
  static constexpr int kCount = 16;

  static Vec load(const std::int16_t* from) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)); }
  static Vec all(std::int16_t word) { return _mm256_set1_epi16(word); }
  static Vec add(Vec a, Vec b) { return _mm256_add_epi16(a, b); }
  static Vec sub(Vec a, Vec b) { return _mm256_sub_epi16(a, b); }
  static Vec addLimited(Vec a, Vec b) { return _mm256_adds_epi16(a, b); }
  static Vec bitAnd(Vec a, Vec b) { return _mm256_and_si256(a, b); }
  static Vec limitedLow(Vec x) { return _mm256_max_epi16(x, all(-cofu::core::kFullScale)); }
  static Vec magnitudes(Vec x) { return _mm256_abs_epi16(x); }
  static Vec excess(Vec a, Vec b) { return _mm256_subs_epu16(a, b); }
  static Vec highProducts(Vec a, Vec b) { return _mm256_mulhi_epi16(a, b); }
  static Vec highUnsignedProducts(Vec a, Vec b) { return _mm256_mulhi_epu16(a, b); }
  static Vec withSignOf(Vec magnitude, Vec x) { return _mm256_sign_epi16(magnitude, x); }

  static Vec productsShifted14(Vec x, Vec gain) {
    const Vec none = _mm256_setzero_si256();
    return _mm256_packs_epi32(_mm256_srai_epi32(_mm256_madd_epi16(_mm256_unpacklo_epi16(x, none), gain), 14),
                              _mm256_srai_epi32(_mm256_madd_epi16(_mm256_unpackhi_epi16(x, none), gain), 14));
  }

  static void storeFloats(float* to, Vec words) {
    const __m256 scale = _mm256_set1_ps(kFloatScale);
    const Vec first = _mm256_cvtepi16_epi32(_mm256_castsi256_si128(words));
    const Vec second = _mm256_cvtepi16_epi32(_mm256_extracti128_si256(words, 1));
    _mm256_storeu_ps(to, _mm256_mul_ps(_mm256_cvtepi32_ps(first), scale));
    _mm256_storeu_ps(to + 8, _mm256_mul_ps(_mm256_cvtepi32_ps(second), scale));
  }
};

}  // namespace

void renderOutputAvx2(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, std::int32_t gain) {
  renderLanes<OutputLanesAvx2>(dry, wet, out, frames, gain);
}

}  // namespace tesh::bramel::plugin::sivray

SIVRAY_COMPILE_FOR_ALL
