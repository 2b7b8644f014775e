// The output stage for SSE2, which every 64-bit processor has: eight samples at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <emmintrin.h>

#include <cstdint>

#include "engine/OutputRun.h"
#include "engine/OutputStage.h"

namespace tesh::bramel::plugin::sivray {
namespace {

struct OutputLanesSse2 {
  using Vec = __m128i;
  static constexpr int kCount = 8;

  static Vec load(const std::int16_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); }
  static Vec all(std::int16_t word) { return _mm_set1_epi16(word); }
  static Vec add(Vec a, Vec b) { return _mm_add_epi16(a, b); }
  static Vec sub(Vec a, Vec b) { return _mm_sub_epi16(a, b); }
  static Vec addLimited(Vec a, Vec b) { return _mm_adds_epi16(a, b); }
  static Vec bitAnd(Vec a, Vec b) { return _mm_and_si128(a, b); }

  /// Limits -32768, which 16 bits can hold, to the engine's lowest sample value, -32767.
  static Vec limitedLow(Vec x) { return _mm_max_epi16(x, all(-cofu::core::kFullScale)); }
  static Vec magnitudes(Vec x) { return _mm_max_epi16(x, sub(_mm_setzero_si128(), x)); }

  /// a - b, at least 0.
  static Vec excess(Vec a, Vec b) { return _mm_subs_epu16(a, b); }
  static Vec highProducts(Vec a, Vec b) { return _mm_mulhi_epi16(a, b); }
  static Vec highUnsignedProducts(Vec a, Vec b) { return _mm_mulhi_epu16(a, b); }

  /// `magnitude`, negative where x is; x = 0 comes with a magnitude of 0.
  static Vec withSignOf(Vec magnitude, Vec x) {
    const Vec sign = _mm_srai_epi16(x, 15);
    return sub(_mm_xor_si128(magnitude, sign), sign);
  }

  /// (gain * x) >> 14, limited to 16 bits.
  static Vec productsShifted14(Vec x, Vec gain) {
    const Vec none = _mm_setzero_si128();
    return _mm_packs_epi32(_mm_srai_epi32(_mm_madd_epi16(_mm_unpacklo_epi16(x, none), gain), 14),
                           _mm_srai_epi32(_mm_madd_epi16(_mm_unpackhi_epi16(x, none), gain), 14));
  }

  /// Words in the high half of 32-bit lanes need no shift: all steps to a float are exact.
  static void storeFloats(float* to, Vec words) {
    const __m128 scale = _mm_set1_ps(kFloatScale / 65536.0F);
    const Vec first = _mm_unpacklo_epi16(_mm_setzero_si128(), words);
    const Vec second = _mm_unpackhi_epi16(_mm_setzero_si128(), words);
    _mm_storeu_ps(to, _mm_mul_ps(_mm_cvtepi32_ps(first), scale));
    _mm_storeu_ps(to + 4, _mm_mul_ps(_mm_cvtepi32_ps(second), scale));
  }
};

}  // namespace

void renderOutputSse2(const std::int16_t* dry, const std::int16_t* wet, float* out, int frames, std::int32_t gain) {
  renderLanes<OutputLanesSse2>(dry, wet, out, frames, gain);
}

}  // namespace tesh::bramel::plugin::sivray
