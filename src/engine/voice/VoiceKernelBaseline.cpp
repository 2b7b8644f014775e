// The voice kernel in the registers that every processor has.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>

#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"
#include "registers/Registers128.h"

#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

using namespace cofu::registers;

int runVoicesBaseline(const VoiceRun& run) { return runVoices<Registers128, FourLanes<Registers128>>(run); }

bool tickRampsBaseline(RampBank& ramps) { return tickRamps<Registers128>(ramps); }

}  // namespace tesh::bramel::plugin::sivray
