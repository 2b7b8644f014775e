// The output stage for AVX2: sixteen samples at a time.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>

#include "core/VectorCode.h"
#include "engine/OutputStage.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "registers/Registers256.h"

#include "engine/OutputRun.h"

namespace tesh::bramel::plugin::sivray {

void renderOutputAvx2(const std::int16_t* dry, BusSamples wet, OutputChannels out, int frames, std::int32_t gain) {
  renderLanes<cofu::registers::Registers256>(dry, wet, out, frames, gain);
}

}  // namespace tesh::bramel::plugin::sivray

SIVRAY_COMPILE_FOR_ALL
