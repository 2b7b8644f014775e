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

void PCMLoadTask::prepare(std::size_t pad, std::int32_t wave) {
  const std::lock_guard lock(prepareMutex);
  if (pool.holdsSpare(pad, wave)) {
    return;
  }
  pool.clearUselessSpares();  // What pads have exchanged since.
  const auto [offsets, frames] = stretchOf(wave);
  const auto [memory, writtenFrames] = pool.claimSpare(pad);
  pool.makeSparePresent(pad, frames);
  pool.offerSpare(pad, wave, file.read(memory, offsets, frames, std::max(frames, writtenFrames)));
}

void PCMLoadTask::run(std::size_t pad, std::int32_t wave) {
  const std::int32_t before = pool.frameOf(pool.memoryOf(pad));
  if (!pool.takeSpare(pad, wave)) {
    read(pad, wave);
  } else if (listener != nullptr) {
    listener->slotMoved(before, pool.frameOf(pool.memoryOf(pad)));
  }
}

void PCMLoadTask::read(std::size_t pad, std::int32_t wave) {
  const Stretch stretch = stretchOf(wave);
  const std::size_t frames = stretch.frames;
  PcmSlot& slot = pool.slot(pad);
  // Only frames that an earlier wave has written need clearing.
  const std::size_t cleared = std::max(frames, slot.writtenFrames);
  // Only here may the audio thread wait for the disk. Pages that are missing come at once, not one by one as they are
  // written.
  const std::size_t kept = cofu::core::mayWait([&] {
    pool.makePresent(pad, frames);
    return file.read(pool.memoryOf(pad), stretch.offsets, frames, cleared);
  });
  if (kept != 0) {
    slot.writtenFrames = kept;
  }
  slot.data = pool.memoryOf(pad);
  slot.frames = kept;
}

void PCMLoadAck::run(std::size_t pad, std::int32_t) { pool.slot(pad).ready = true; }

int ThroughBack::setValue(int pad, std::int32_t* wave) {
  prepare.setValue(pad, wave);
  const int taken = load.setValue(pad, wave);
  acknowledge.setValue(pad, wave);
  return taken;
}

}  // namespace tesh::bramel::plugin::sivray
