// The functions of the kernels: a pair per instruction set, each pair in its own source file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

class RampBank;
struct VoiceRun;

int runVoicesBaseline(const VoiceRun& run) SIVRAY_NONBLOCKING;
int runVoicesSse41(const VoiceRun& run) SIVRAY_NONBLOCKING;
int runVoicesAvx2(const VoiceRun& run) SIVRAY_NONBLOCKING;

bool tickRampsBaseline(RampBank& ramps) SIVRAY_NONBLOCKING;
bool tickRampsSse41(RampBank& ramps) SIVRAY_NONBLOCKING;
bool tickRampsAvx2(RampBank& ramps) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::plugin::sivray
