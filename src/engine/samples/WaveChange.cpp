// What each step of a wave change does.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveChange.h"

#include <algorithm>
#include <utility>

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

WaveStretch PCMLoadTask::stretchOf(std::int32_t wave) const {
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
  const WaveStretch stretch = stretchOf(wave);
  const auto [memory, writtenFrames] = pool.claimSpare(pad);
  pool.makeSparePresent(pad, stretch.frames);
  pool.offerSpare(pad, wave, file.read(memory, stretch, std::max(stretch.frames, writtenFrames)));
}

void PCMLoadTask::run(std::size_t pad, std::int32_t wave) {
  const std::int32_t before = pool.frameOf(pool.memoryOf(pad));
  if (!pool.takeSpare(pad, wave)) {
    // Only here, and where pieces are read, may the audio thread wait for the disk.
    cofu::core::mayWait([&] { begin(pad, wave); });
    return;
  }
  cofu::core::mayWait([&] { readings[pad].stop(); });  // Closes the file.
  countReadings();
  if (listener != nullptr) {
    listener->slotMoved(before, pool.frameOf(pool.memoryOf(pad)));
  }
}

/// Without the file the memory keeps the wave before, for voices that play it.
void PCMLoadTask::begin(std::size_t pad, std::int32_t wave) {
  PcmSlot& slot = pool.slot(pad);
  slot.data = pool.memoryOf(pad);
  auto opened = file.open();
  if (!opened) {
    slot.frames = 0;
    return;
  }
  const WaveStretch stretch = stretchOf(wave);
  slot.frames = stretch.frames;
  readings[pad].begin(std::move(*opened), stretch, pool.memoryOf(pad), slot.writtenFrames);
  slot.writtenFrames = std::max(slot.writtenFrames, stretch.frames);
  settle(pad);
}

void PCMLoadTask::countReadings() {
  openReadings = static_cast<std::size_t>(
      std::count_if(readings.begin(), readings.end(), [](const WaveReading& reading) { return reading.isOpen(); }));
}

void PCMLoadTask::need(std::int32_t base, std::size_t first, std::size_t last) {
  for (std::size_t pad = 0; pad < readings.size(); ++pad) {
    if (readings[pad].isOpen() && pool.frameOf(pool.memoryOf(pad)) == base) {
      cofu::core::mayWait([&] { readings[pad].need(first, last); });
    }
  }
}

void PCMLoadTask::readOn() {
  if (!isReading()) {
    return;
  }
  do {
    latestPad = (latestPad + 1) % readings.size();
  } while (!readings[latestPad].isOpen());
  cofu::core::mayWait([this] { readings[latestPad].readNext(); });
  settle(latestPad);
}

void PCMLoadTask::finish() {
  for (std::size_t pad = 0; pad < readings.size(); ++pad) {
    if (readings[pad].isOpen()) {
      pool.makePresent(pad, readings[pad].waveFrames());  // At once, not one by one as they are written.
      readings[pad].finish();
      settle(pad);
    }
  }
}

/// Takes over how far the reading has come. What lies behind a complete wave is zero.
void PCMLoadTask::settle(std::size_t pad) {
  if (!readings[pad].isOpen()) {
    pool.slot(pad).writtenFrames = readings[pad].waveFrames();
  }
  countReadings();
}

void PCMLoadAck::run(std::size_t pad, std::int32_t) { pool.slot(pad).ready = true; }

int ThroughBack::setValue(int pad, std::int32_t* wave) {
  prepare.setValue(pad, wave);
  const int taken = load.setValue(pad, wave);
  acknowledge.setValue(pad, wave);
  return taken;
}

}  // namespace tesh::bramel::plugin::sivray
