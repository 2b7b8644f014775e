// The voice kernel for SSE2, which every 64-bit processor has.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"

#include "engine/voice/LanesSse2.h"
#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

int runVoicesSse2(const VoiceRun& run) { return runVoices<LanesSse2, LanesSse2>(run); }

bool tickRampsSse2(RampBank& ramps) { return tickRamps<LanesSse2>(ramps); }

}  // namespace tesh::bramel::plugin::sivray
