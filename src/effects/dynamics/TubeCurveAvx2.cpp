// The curve of the tube stage for AVX2.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstring>

#include "core/VectorCode.h"
#include "effects/dynamics/TubeCurve.h"

SIVRAY_COMPILE_FOR("avx2")

#include "effects/dynamics/TubeLanes.h"

namespace tesh::bramel::plugin::fxkit {

void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) {
  throughTubes(samples, drives, mixes, count);
}

}  // namespace tesh::bramel::plugin::fxkit

SIVRAY_COMPILE_FOR_ALL
