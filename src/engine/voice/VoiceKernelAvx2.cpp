// The voice kernel for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>

#include "core/VectorCode.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"
#include "registers/Registers128.h"

// In the build for Windows, GCC believes that the chain's inlined constructor is compiled without AVX2, and warns. It
// is compiled with AVX2.
#pragma GCC diagnostic ignored "-Wpsabi"
SIVRAY_COMPILE_FOR("avx2")

#include "registers/Registers256.h"

#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

using namespace cofu::registers;

int runVoicesAvx2(const VoiceRun& run) { return runVoices<Registers128Sse41, EightLanes<Registers256>>(run); }

bool tickRampsAvx2(RampBank& ramps) { return tickRamps<Registers128Sse41>(ramps); }

}  // namespace tesh::bramel::plugin::sivray

SIVRAY_COMPILE_FOR_ALL
