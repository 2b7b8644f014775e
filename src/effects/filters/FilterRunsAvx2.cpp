// The runs of filters for AVX2. The state-variable filter multiplies signed values there and limits in two steps; the
// talking modulator only needs no copies of registers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"

// Code between these marks is compiled for AVX2. Inline functions that other files share must stay outside, as they
// have to run on every processor.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

#include "effects/filters/TolvanStep.h"

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
[[gnu::flatten]] unsigned TolvanLaw<kMode>::runAvx2(TolvanLaw& law, std::int16_t* left, std::int16_t* right,
                                                    unsigned count) {
  TolvanLaw now = law;
  for (unsigned i = 0; i < count; ++i) {
    stepFilter<ArithmeticAvx2, kMode>(now, left[i], right[i]);
  }
  law = now;
  return count;
}

template unsigned TolvanLaw<TolvanMode::kLowpass>::runAvx2(TolvanLaw&, std::int16_t*, std::int16_t*,
                                                           unsigned) SIVRAY_NONBLOCKING;
template unsigned TolvanLaw<TolvanMode::kHighpass>::runAvx2(TolvanLaw&, std::int16_t*, std::int16_t*,
                                                            unsigned) SIVRAY_NONBLOCKING;
template unsigned TolvanLaw<TolvanMode::kBandpass>::runAvx2(TolvanLaw&, std::int16_t*, std::int16_t*,
                                                            unsigned) SIVRAY_NONBLOCKING;

[[gnu::flatten]] unsigned TalkingModulatorLaw::runAvx2(TalkingModulatorLaw& law, std::int16_t* left,
                                                       std::int16_t* right, unsigned count) {
  TalkingModulatorLaw now = law;
  for (unsigned i = 0; i < count; ++i) {
    now.step({}, left[i], right[i]);
  }
  law = now;
  return count;
}

}  // namespace tesh::bramel::plugin::sivray::effects

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
