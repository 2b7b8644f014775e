// The resampler's kernel for AVX2: eight lanes hold four frames of two channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <bit>

#include "core/VectorCode.h"
#include "host/resample/ResampleKernelSets.h"
#include "registers/Registers128.h"

SIVRAY_COMPILE_FOR("avx2")

#include "registers/Registers256.h"

#include "host/resample/ResampleKernelRun.h"

namespace tesh::bramel::vst {

std::size_t runResampleAvx2(const ResampleRun& run, ResamplePosition& position) {
  return runResample<cofu::registers::Registers256>(run, position);
}

}  // namespace tesh::bramel::vst

SIVRAY_COMPILE_FOR_ALL
