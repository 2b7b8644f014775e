// The curve of the tube stage for SSE2, which every 64-bit processor has.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/TubeCurve.h"
#include "effects/dynamics/TubeLanes.h"

namespace tesh::bramel::plugin::fxkit {

void throughTubeSse2(float* samples, const float* drives, const float* mixes, unsigned count) {
  throughTubes(samples, drives, mixes, count);
}

}  // namespace tesh::bramel::plugin::fxkit
