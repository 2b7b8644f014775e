// Gives a pad its wave: a fetched one, or one that is read piece by piece.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/PadWaves.h"

#include <algorithm>
#include <utility>

namespace tesh::bramel::plugin::sivray {

PadWaves::PadWaves(PcmFile& sampleFile, std::size_t padCount, std::size_t slotFrames)
    : file(sampleFile), memory(padCount, slotFrames), readings(padCount) {}

WaveStretch PadWaves::stretchOf(std::int32_t wave) const {
  const WaveInfo info = file.database().lookup(wave);
  // Of 32 bits: a stretch that ends before its start wraps.
  const std::uint64_t length = info.leftEnd - info.leftStart + 1U;
  return {{info.leftStart, info.rightStart}, std::min<std::uint64_t>(memory.slotFrames() - 2, length)};
}

void PadWaves::fetch(std::size_t pad, std::int32_t wave) {
  const std::lock_guard lock(fetchMutex);
  if (memory.holdsSpare(pad, wave)) {
    return;
  }
  memory.freeUnused();
  memory.offerSpare(pad, wave, WaveStore::share(memory.waveStore(), file, stretchOf(wave), memory.slotFrames()));
}

void PadWaves::empty(std::size_t pad) {
  PcmSlot& slot = memory.slot(pad);
  slot.ready = false;
  slot.data = memory.silence();
  slot.frames = 0;
}

PadWaves::Move PadWaves::take(std::size_t pad, std::int32_t wave) {
  const std::int32_t before = memory.frameOf(memory.memoryOf(pad));
  if (memory.takeSpare(pad, wave)) {
    cofu::core::mayWait([&] { readings[pad].stop(); });  // Closes the file.
    countReadings();
  } else {
    // Only this call and the reading of pieces may make the audio thread wait for the disk.
    cofu::core::mayWait([&] { begin(pad, wave); });
  }
  return {before, memory.frameOf(memory.memoryOf(pad))};
}

/// Without the file the pad has no wave. Its memory keeps the previous wave for voices that still play it.
void PadWaves::begin(std::size_t pad, std::int32_t wave) {
  auto opened = file.open();
  if (!opened) {
    empty(pad);
    return;
  }
  const WaveStretch stretch = stretchOf(wave);
  OwnMemory& own = memory.useOwn(pad);
  PcmSlot& slot = memory.slot(pad);
  slot.data = own.area.samples();
  slot.frames = stretch.frames;
  readings[pad].begin(std::move(*opened), stretch, own.area, own.writtenFrames);
  own.writtenFrames = std::max<std::size_t>(own.writtenFrames, stretch.frames);
  noteProgress(pad);
}

void PadWaves::countReadings() {
  openReadings = static_cast<std::size_t>(
      std::count_if(readings.begin(), readings.end(), [](const WaveReading& reading) { return reading.isOpen(); }));
}

void PadWaves::need(std::int32_t base, std::size_t first, std::size_t last) {
  for (std::size_t pad = 0; pad < readings.size(); ++pad) {
    if (readings[pad].isOpen() && memory.frameOf(memory.memoryOf(pad)) == base) {
      cofu::core::mayWait([&] { readings[pad].need(first, last); });
    }
  }
}

void PadWaves::readOn() {
  if (!isReading()) {
    return;
  }
  do {
    latestPad = (latestPad + 1) % readings.size();
  } while (!readings[latestPad].isOpen());
  cofu::core::mayWait([this] { readings[latestPad].readNext(); });
  noteProgress(latestPad);
}

void PadWaves::finish() {
  for (std::size_t pad = 0; pad < readings.size(); ++pad) {
    if (readings[pad].isOpen()) {
      // Present at once, instead of page by page as they are written.
      memory.useOwn(pad).area.makePresent(readings[pad].waveFrames());
      readings[pad].finish();
      noteProgress(pad);
    }
  }
}

/// Updates the number of frames that have been read. The memory behind a complete wave is zero.
void PadWaves::noteProgress(std::size_t pad) {
  if (!readings[pad].isOpen()) {
    memory.useOwn(pad).writtenFrames = readings[pad].waveFrames();
  }
  countReadings();
}

}  // namespace tesh::bramel::plugin::sivray
