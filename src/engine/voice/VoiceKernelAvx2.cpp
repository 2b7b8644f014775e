// The voice kernel for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "core/VectorCode.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"

// When it builds for Windows, GCC takes the chain's inlined constructor for code without AVX2, and warns. It is not.
#pragma GCC diagnostic ignored "-Wpsabi"
SIVRAY_COMPILE_FOR("avx2")

#include "engine/voice/LanesAvx2.h"
#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

int runVoicesAvx2(const VoiceRun& run) { return runVoices<LanesSse41, LanesAvx2>(run); }

bool tickRampsAvx2(RampBank& ramps) { return tickRamps<LanesSse41>(ramps); }

}  // namespace tesh::bramel::plugin::sivray

SIVRAY_COMPILE_FOR_ALL
