// What each step of a wave change does.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveChange.h"

#include <algorithm>

namespace tesh::bramel::plugin::sivray {

int WaveChangeStep::setValue(int pad, std::int32_t* wave) {
  if (pad < 0 || pad >= count()) {
    return 0;
  }
  run(static_cast<std::size_t>(pad), *wave);
  return *wave;
}

void PrepareWaveChange::run(std::size_t pad, std::int32_t) { waves.empty(pad); }

void PCMLoadTask::run(std::size_t pad, std::int32_t wave) {
  const auto [from, to] = waves.take(pad, wave);
  std::replace(bases.begin(), bases.end(), from, to);
}

void PCMLoadAck::run(std::size_t pad, std::int32_t) { waves.pool().slot(pad).ready = true; }

int ThroughBack::setValue(int pad, std::int32_t* wave) {
  prepare.setValue(pad, wave);
  const int taken = load.setValue(pad, wave);
  acknowledge.setValue(pad, wave);
  return taken;
}

}  // namespace tesh::bramel::plugin::sivray
