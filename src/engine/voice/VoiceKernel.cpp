// The table of kernels and the choice of one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/VoiceKernel.h"

#include <array>

#include "engine/voice/VoiceKernelSets.h"

namespace tesh::bramel::plugin::sivray {

namespace {

bool always() { return true; }
bool hasSse41() { return __builtin_cpu_supports("sse4.1") != 0; }
bool hasAvx2() { return __builtin_cpu_supports("avx2") != 0; }

constexpr std::array<VoiceKernel, 3> kKernels{{
    {"SSE2", always, runVoicesSse2, tickRampsSse2},
    {"SSE4.1", hasSse41, runVoicesSse41, tickRampsSse41},
    {"AVX2", hasAvx2, runVoicesAvx2, tickRampsAvx2},
}};

}  // namespace

std::span<const VoiceKernel> voiceKernels() { return kKernels; }

const VoiceKernel& bestVoiceKernel() {
  std::size_t best = kKernels.size() - 1;
  while (!kKernels[best].isSupported()) {
    --best;
  }
  return kKernels[best];
}

}  // namespace tesh::bramel::plugin::sivray
