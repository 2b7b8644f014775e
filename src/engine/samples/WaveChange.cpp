// What each step of a wave change does.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveChange.h"

#include <algorithm>

#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

int WaveChangeStep::setValue(int pad, std::int32_t* wave) {
  if (pad < 0 || pad >= count()) {
    return 0;
  }
  run(static_cast<std::size_t>(pad), *wave);
  return *wave;
}

void PrepareWaveChange::run(std::size_t pad, std::int32_t) {
  PcmSlot& slot = pool.slot(pad);
  slot.ready = false;
  slot.data = pool.silence();
  slot.frames = 0;
}

PCMLoadTask::Stretch PCMLoadTask::stretchOf(std::int32_t wave) const {
  const WaveInfo info = file.database().lookup(wave);
  const std::uint64_t length = info.leftEnd - info.leftStart + 1U;  // 32 bits: a stretch that ends early wraps
  return {{info.leftStart, info.rightStart}, std::min<std::uint64_t>(pool.slotFrames() - 2, length)};
}

void PCMLoadTask::prepare(std::size_t pad, std::int32_t wave) const {
  const auto [offsets, frames] = stretchOf(wave);
  pool.makePresent(pad, frames);
  file.warm(offsets, frames);
}

void PCMLoadTask::run(std::size_t pad, std::int32_t wave) {
  const Stretch stretch = stretchOf(wave);
  const std::size_t frames = stretch.frames;
  PcmSlot& slot = pool.slot(pad);
  // Only frames that an earlier wave has written need clearing.
  const std::size_t cleared = std::max<std::size_t>(frames, slot.writtenFrames);
  // Only here may the audio thread wait for the disk. Pages that are missing come at once, not one by one as they are
  // written.
  const std::size_t read = cofu::core::mayWait([&] {
    if (frames > slot.writtenFrames) {
      pool.makePresent(pad, frames);
    }
    return file.read(pool.memoryOf(pad), stretch.offsets, frames, cleared);
  });
  if (read != 0) {
    slot.writtenFrames = read;
  }
  slot.data = pool.memoryOf(pad);
  slot.frames = read;
}

void PCMLoadAck::run(std::size_t pad, std::int32_t) { pool.slot(pad).ready = true; }

int ThroughBack::setValue(int pad, std::int32_t* wave) {
  prepare.setValue(pad, wave);
  const int taken = load.setValue(pad, wave);
  acknowledge.setValue(pad, wave);
  return taken;
}

}  // namespace tesh::bramel::plugin::sivray
