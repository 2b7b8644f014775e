// Reads shared waves, makes others wait for a wave that is being read, and frees waves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/WaveStore.h"

#include <new>
#include <optional>
#include <utility>

#include "core/HeldByAll.h"

namespace tesh::bramel::plugin::sivray {

std::shared_ptr<WaveStore> WaveStore::ofProcess() {
  static cofu::core::HeldByAll<WaveStore> held;
  return held.get([] { return std::make_shared<WaveStore>(SampleMemory::ofProcess()); });
}

WaveStore::Share WaveStore::share(const std::shared_ptr<WaveStore>& store, const PcmFile& file,
                                  const WaveStretch& stretch, std::size_t slotFrames) {
  std::optional<platform::InputFile> opened = file.open();
  if (!opened || stretch.frames == 0) {
    return {};
  }
  const std::optional<platform::FileVersion> version = opened->version();
  if (!version) {
    return {};
  }
  try {
    return store->holdOrRead(store, *opened, {*version, stretch, slotFrames});
  } catch (const std::bad_alloc&) {
    return {};
  }
}

WaveStore::Share WaveStore::holdOrRead(const std::shared_ptr<WaveStore>& self, platform::InputFile& file,
                                       const Content& content) {
  std::unique_lock lock(mutex);
  auto copy = copies.find(content);
  const bool isNew = copy == copies.end();
  if (isNew) {
    SampleMemory::Area area = SampleMemory::take(memory, content.slotFrames);
    copy = copies.try_emplace(content).first;
    copy->second.area = std::move(area);
  }
  ++copy->second.holders;
  if (isNew) {
    lock.unlock();
    const SampleMemory::Area& area = copy->second.area;
    area.makePresent(content.stretch.frames);
    PcmFile::readPart(file, content.stretch, area.samples(), 0, content.stretch.frames, Reading::waits);
    lock.lock();
    copy->second.isRead = true;
    hasRead.notify_all();
  } else {
    hasRead.wait(lock, [copy] { return copy->second.isRead; });
  }
  Share share;
  share.store = self;
  share.copy = copy;
  share.first = copy->second.area.samples();
  share.waveFrames = content.stretch.frames;
  return share;
}

void WaveStore::letGo(Copies::iterator copy) {
  SampleMemory::Area unused;  // Freed after the lock is released.
  const std::lock_guard lock(mutex);
  if (--copy->second.holders == 0) {
    unused = std::move(copy->second.area);
    copies.erase(copy);
  }
}

WaveStore::Share::Share(Share&& other) noexcept { swap(other); }

WaveStore::Share& WaveStore::Share::operator=(Share&& other) noexcept {
  swap(other);
  return *this;
}

WaveStore::Share::~Share() {
  if (store != nullptr) {
    store->letGo(copy);
  }
}

}  // namespace tesh::bramel::plugin::sivray
