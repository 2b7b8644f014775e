// The steps of a wave change.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveChange.h"

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
  for (std::size_t voice = 0; voice < bases.size(); ++voice) {
    // Compares both: other pads may play the same memory, and voices that started on an empty slot must stay silent.
    if (pads[voice] == static_cast<std::int32_t>(pad) && bases[voice] == from) {
      bases[voice] = to;
    }
  }
}

void PCMLoadAck::run(std::size_t pad, std::int32_t) { waves.pool().slot(pad).ready = true; }

int ThroughBack::setValue(int pad, std::int32_t* wave) {
  prepare.setValue(pad, wave);
  const int taken = load.setValue(pad, wave);
  acknowledge.setValue(pad, wave);
  return taken;
}

}  // namespace tesh::bramel::plugin::sivray
