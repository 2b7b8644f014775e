// The entries of the kernels, each in its own translation unit.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {

std::size_t runResampleSse2(const ResampleRun& run, ResamplePosition& position);
std::size_t runResampleAvx2(const ResampleRun& run, ResamplePosition& position);

}  // namespace tesh::bramel::vst
