// The entry points of the kernels, each in its own source file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/RealTime.h"
#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {

std::size_t runResampleBaseline(const ResampleRun& run, ResamplePosition& position) SIVRAY_NONBLOCKING;
std::size_t runResampleAvx2(const ResampleRun& run, ResamplePosition& position) SIVRAY_NONBLOCKING;

}  // namespace tesh::bramel::vst
