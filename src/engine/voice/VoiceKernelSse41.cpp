// The voice kernel for SSE4.1.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>

#include "core/VectorCode.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("sse4.1")

#include "registers/Registers128Sse41.h"

#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

using namespace cofu::registers;

int runVoicesSse41(const VoiceRun& run) { return runVoices<Registers128Sse41, FourLanes<Registers128Sse41>>(run); }

bool tickRampsSse41(RampBank& ramps) { return tickRamps<Registers128Sse41>(ramps); }

}  // namespace tesh::bramel::plugin::sivray

SIVRAY_COMPILE_FOR_ALL
