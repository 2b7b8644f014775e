// The comparison of SampleLanesCheck.h for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdint>

#include "core/VectorCode.h"
#include "effects/interfaces/OneSample.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/interfaces/Lanes256.h"

#include "effects/interfaces/SampleLanesCheck.h"

namespace tesh::bramel::plugin::sivray::effects {

void operateAvx2(const SampleRow& a, const SampleRow& b, const std::array<int, 4>& numbers, LaneResults& results) {
  operate<Samples256>(a, b, numbers, results);
}

void operateOnWordsAvx2(const WordRow& a, const WordRow& b, std::int16_t factor, WordResults& results) {
  operateOnWords<Samples256::Words>(a, b, factor, results);
}

bool comesRoundTheRingAvx2(const std::int16_t* samples) { return comesRoundTheRing<Samples256>(samples); }

}  // namespace tesh::bramel::plugin::sivray::effects

SIVRAY_COMPILE_FOR_ALL
