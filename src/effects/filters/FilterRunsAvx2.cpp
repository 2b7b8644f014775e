// The runs of filters for AVX2. The state-variable filter multiplies signed values there and limits in two steps; the
// talking modulator only needs no copies of registers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "core/VectorCode.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/filters/TolvanStep.h"
#include "effects/interfaces/SerialRun.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

struct ArithmeticAvx2 {
  static StereoLanes mulShift23(StereoLanes value, StereoLanes factor) {
    return {_mm_srli_epi64(_mm_mul_epi32(value.v, factor.v), 23)};
  }
  static StereoLanes limited24(StereoLanes value) {
    const __m128i top = _mm_set1_epi32(lanes::kFull24);
    return {_mm_max_epi32(_mm_min_epi32(value.v, top), _mm_sub_epi32(__m128i{}, top))};
  }
};

}  // namespace

template <TolvanMode kMode>
unsigned TolvanLaw<kMode>::runAvx2(TolvanLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runSerially(law, left, right, count, [](TolvanLaw& now, std::int16_t& l, std::int16_t& r) {
    stepFilter<ArithmeticAvx2, kMode>(now, l, r);
  });
}

template unsigned TolvanLaw<TolvanMode::kLowpass>::runAvx2(TolvanLaw&, std::int16_t*, std::int16_t*,
                                                           unsigned) SIVRAY_NONBLOCKING;
template unsigned TolvanLaw<TolvanMode::kHighpass>::runAvx2(TolvanLaw&, std::int16_t*, std::int16_t*,
                                                            unsigned) SIVRAY_NONBLOCKING;
template unsigned TolvanLaw<TolvanMode::kBandpass>::runAvx2(TolvanLaw&, std::int16_t*, std::int16_t*,
                                                            unsigned) SIVRAY_NONBLOCKING;

unsigned TalkingModulatorLaw::runAvx2(TalkingModulatorLaw& law, std::int16_t* left, std::int16_t* right,
                                      unsigned count) {
  return runSerially(law, left, right, count,
                     [](TalkingModulatorLaw& now, std::int16_t& l, std::int16_t& r) { now.step({}, l, r); });
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
