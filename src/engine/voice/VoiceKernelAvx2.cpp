// The voice kernel for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <immintrin.h>

#include <cstddef>
#include <cstdint>

#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceBank.h"
#include "engine/voice/VoiceKernel.h"
#include "engine/voice/VoiceKernelSets.h"

// Code between these marks is compiled for AVX2. Inline functions that other files share must stay outside, as they
// have to run on every processor.
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
// When it builds for Windows, GCC takes the chain's inlined constructor for code without AVX2, and warns. It is not.
#pragma GCC diagnostic ignored "-Wpsabi"
#pragma GCC push_options
#pragma GCC target("avx2")
#endif

#include "engine/voice/LanesAvx2.h"
#include "engine/voice/VoiceKernelRun.h"

namespace tesh::bramel::plugin::sivray {

int runVoicesAvx2(const VoiceRun& run) { return runVoices<LanesSse41, LanesAvx2>(run); }

bool tickRampsAvx2(RampBank& ramps) { return tickRamps<LanesSse41>(ramps); }

}  // namespace tesh::bramel::plugin::sivray

#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
