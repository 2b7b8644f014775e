// The table of kernels and the choice of one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceKernel.h"

#include <array>

#include "core/VectorCode.h"
#include "engine/voice/VoiceKernelSets.h"

namespace tesh::bramel::plugin::sivray {

namespace {

using platform::VectorSet;

#if SIVRAY_FOR_X86
constexpr std::array<VoiceKernel, 3> kKernels{{
    {"SSE2", VectorSet::baseline, runVoicesBaseline, tickRampsBaseline},
    {"SSE4.1", VectorSet::sse41, runVoicesSse41, tickRampsSse41},
    {"AVX2", VectorSet::avx2, runVoicesAvx2, tickRampsAvx2},
}};
#else
constexpr std::array<VoiceKernel, 1> kKernels{{{"NEON", VectorSet::baseline, runVoicesBaseline, tickRampsBaseline}}};
#endif

}  // namespace

std::span<const VoiceKernel> voiceKernels() { return kKernels; }

const VoiceKernel& bestVoiceKernel() { return platform::bestKernel(kKernels); }

}  // namespace tesh::bramel::plugin::sivray
