// The entries of the kernels, one pair per instruction set, each pair in its own translation unit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray {

class RampBank;
struct VoiceRun;

int runVoicesSse2(const VoiceRun& run);
int runVoicesSse41(const VoiceRun& run);
int runVoicesAvx2(const VoiceRun& run);

bool tickRampsSse2(RampBank& ramps);
bool tickRampsSse41(RampBank& ramps);
bool tickRampsAvx2(RampBank& ramps);

}  // namespace tesh::bramel::plugin::sivray
