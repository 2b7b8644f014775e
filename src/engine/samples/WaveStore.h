// The waves that the pads of all instances in the process play: one constant copy of each.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <compare>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "core/RealTime.h"
#include "engine/samples/PcmFile.h"
#include "engine/samples/SampleMemory.h"
#include "platform/Files.h"

namespace tesh::bramel::plugin::sivray {

/// Any thread but the audio thread.
class WaveStore {
  /// Identifies a copy: a stretch of a version of the file, and the number of frames up to which zeros follow it.
  struct Content {
    platform::FileVersion file;
    WaveStretch stretch;
    std::size_t slotFrames = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): the compiler's own code compares with 0.
    friend auto operator<=>(const Content&, const Content&) = default;
  };

  struct Copy {
    SampleMemory::Area area;
    std::size_t holders = 0;
    bool isRead = false;  ///< Until then the first holder's thread writes the area, without a lock.
  };

  using Copies = std::map<Content, Copy>;

 public:
  /// The process's store, made for the first holder and freed with the last one.
  static std::shared_ptr<WaveStore> ofProcess();

  explicit WaveStore(std::shared_ptr<SampleMemory> sampleMemory) : memory(std::move(sampleMemory)) {}

  /// Shared ownership of a copy, which is freed with its last holder. Not to be destroyed on the audio thread.
  class Share {
   public:
    Share() = default;
    Share(Share&& other) noexcept;
    Share& operator=(Share&& other) noexcept;
    ~Share();

    /// Any thread.
    void swap(Share& other) noexcept SIVRAY_NONBLOCKING {
      store.swap(other.store);
      std::swap(copy, other.copy);
      std::swap(first, other.first);
      std::swap(waveFrames, other.waveFrames);
    }

    explicit operator bool() const { return store != nullptr; }

    /// The wave's first sample; null for an empty share.
    const std::int16_t* samples() const { return first; }
    /// Length of the wave in frames.
    std::size_t frames() const { return waveFrames; }

   private:
    friend class WaveStore;
    std::shared_ptr<WaveStore> store;
    Copies::iterator copy{};
    const std::int16_t* first = nullptr;
    std::size_t waveFrames = 0;
  };

  /// Returns a copy of the stretch as it is in the file now, followed by zeros up to `slotFrames` frames, which is at
  /// least the stretch's length. Waits for the disk, or for another thread that reads the same. Returns an empty share
  /// if the file cannot be opened, if the stretch is empty, or without memory.
  static Share share(const std::shared_ptr<WaveStore>& store, const PcmFile& file, const WaveStretch& stretch,
                     std::size_t slotFrames);

 private:
  Share holdOrRead(const std::shared_ptr<WaveStore>& self, platform::InputFile& file, const Content& content);
  void letGo(Copies::iterator copy);

  std::shared_ptr<SampleMemory> memory;
  std::mutex mutex;  ///< Guards all members below, except the samples.
  std::condition_variable hasRead;
  Copies copies;
};

}  // namespace tesh::bramel::plugin::sivray
