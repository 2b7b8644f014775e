// The voice kernel for SSE4.1.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "core/VectorCode.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"

SIVRAY_COMPILE_FOR("sse4.1")

#include "engine/voice/LanesSse41.h"
#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

int runVoicesSse41(const VoiceRun& run) { return runVoices<LanesSse41, LanesSse41>(run); }

bool tickRampsSse41(RampBank& ramps) { return tickRamps<LanesSse41>(ramps); }

}  // namespace tesh::bramel::plugin::sivray

SIVRAY_COMPILE_FOR_ALL
