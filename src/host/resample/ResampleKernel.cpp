// The table of kernels and the choice of one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/ResampleKernel.h"

#include "host/resample/ResampleKernelSets.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::vst {

std::span<const ResampleKernel> resampleKernels() {
  static const std::array<ResampleKernel, 2> kernels{{
      {"SSE2", true, runResampleSse2},
      {"AVX2", platform::bestVectorSet() >= platform::VectorSet::avx2, runResampleAvx2},
  }};
  return kernels;
}

const ResampleKernel& bestResampleKernel() {
  const auto kernels = resampleKernels();
  return kernels.back().isSupported ? kernels.back() : kernels.front();
}

}  // namespace tesh::bramel::vst
