// The table of kernels and the choice of one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/ResampleKernel.h"

#include "host/resample/ResampleKernelSets.h"

namespace tesh::bramel::vst {
namespace {

using platform::VectorSet;

constexpr std::array<ResampleKernel, 2> kKernels{{
    {"SSE2", VectorSet::baseline, runResampleSse2},
    {"AVX2", VectorSet::avx2, runResampleAvx2},
}};

}  // namespace

std::span<const ResampleKernel> resampleKernels() { return kKernels; }

const ResampleKernel& bestResampleKernel() { return platform::bestKernel(kKernels); }

}  // namespace tesh::bramel::vst
