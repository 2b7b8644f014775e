// The filter of both resamplers. 384 taps in 16 phases reach 12 engine frames to either side, enough for a cut-off just
// below half of 44100 Hz with a stop band of 85 dB from 27 kHz on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

inline constexpr std::int32_t kFilterLength = 384;
inline constexpr std::int32_t kCutoffHz = 22000;
inline constexpr double kAttenuationDb = 85.0;
inline constexpr std::int32_t kUpPhases = 16;

}  // namespace tesh::bramel::vst
