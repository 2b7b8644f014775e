// The resampler's kernel in the registers that every processor has: four lanes hold two frames of two channels.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/ResampleKernelRun.h"
#include "host/resample/ResampleKernelSets.h"
#include "registers/Registers128.h"

namespace tesh::bramel::vst {

std::size_t runResampleBaseline(const ResampleRun& run, ResamplePosition& position) {
  return runResample<cofu::registers::Registers128>(run, position);
}

}  // namespace tesh::bramel::vst
