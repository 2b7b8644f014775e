// The filter of the converter's resamplers. 384 taps in 16 phases reach 12 engine frames to either side, which leaves
// the cut-off just below half the engine's rate and makes 85 dB possible from 27 kHz on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

inline constexpr std::int32_t kFilterLength = 384;
inline constexpr std::int32_t kCutoffHz = 22000;
inline constexpr double kAttenuationDb = 85.0;
inline constexpr std::int32_t kUpPhases = 16;

}  // namespace tesh::bramel::vst
