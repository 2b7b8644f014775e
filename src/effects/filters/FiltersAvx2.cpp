// The runs of filters for AVX2. The state-variable filter multiplies signed values there and limits in two steps; the
// talking modulator only needs no copies of registers.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/VectorCode.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"

SIVRAY_COMPILE_FOR("avx2")

#include "registers/Registers128Sse41.h"

#include "effects/filters/FormantStep.h"
#include "effects/filters/TolvanStep.h"
#include "effects/interfaces/SerialRun.h"

namespace tesh::bramel::plugin::sivray::effects {

template <TolvanMode kMode>
unsigned TolvanLaw<kMode>::runAvx2(TolvanLaw& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  return runSerially(law, left, right, count, [](TolvanLaw& now, std::int16_t& l, std::int16_t& r) {
    stepFilter<cofu::registers::Registers128Sse41, kMode>(now, l, r);
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
  return runSerially(law, left, right, count, [](TalkingModulatorLaw& now, std::int16_t& l, std::int16_t& r) {
    stepFormants<cofu::registers::Registers128Sse41>(now, l, r);
  });
}

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
