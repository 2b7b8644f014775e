// The table of kernels and the choice of one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/ResampleKernel.h"

#include "core/VectorCode.h"
#include "host/resample/ResampleKernelSets.h"

namespace tesh::bramel::vst {
namespace {

using platform::VectorSet;

#if SIVRAY_FOR_X86
constexpr std::array<ResampleKernel, 2> kKernels{{
    {"SSE2", VectorSet::baseline, runResampleBaseline},
    {"AVX2", VectorSet::avx2, runResampleAvx2},
}};
#else
constexpr std::array<ResampleKernel, 1> kKernels{{{"NEON", VectorSet::baseline, runResampleBaseline}}};
#endif

}  // namespace

std::span<const ResampleKernel> resampleKernels() { return kKernels; }

const ResampleKernel& bestResampleKernel() { return platform::bestKernel(kKernels); }

}  // namespace tesh::bramel::vst
