// The waves that pads of all instances in the process play: one copy of each, which nobody changes.
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
  /// What a copy holds: a stretch of a version of the file, and how many frames it is followed by zeros to.
  struct Content {
    platform::FileVersion file;
    WaveStretch stretch;
    std::size_t slotFrames = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): what the compiler makes of it compares with 0.
    friend auto operator<=>(const Content&, const Content&) = default;
  };

  struct Copy {
    SampleMemory::Area area;
    std::size_t holders = 0;
    bool isRead = false;  ///< Until then the first holder's thread writes the area, with no lock held.
  };

  using Copies = std::map<Content, Copy>;

 public:
  /// The process' store, made for the first holder and freed with the last one.
  static std::shared_ptr<WaveStore> ofProcess();

  explicit WaveStore(std::shared_ptr<SampleMemory> sampleMemory) : memory(std::move(sampleMemory)) {}

  /// Holds a copy. Its end, not on the audio thread, frees the copy with its last holder.
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

    /// The wave's first sample, in the memory of the process; null for a share of nothing.
    const std::int16_t* samples() const { return first; }
    /// Frames of the wave.
    std::size_t frames() const { return waveFrames; }

   private:
    friend class WaveStore;
    std::shared_ptr<WaveStore> store;
    Copies::iterator copy{};
    const std::int16_t* first = nullptr;
    std::size_t waveFrames = 0;
  };

  /// Gives a copy of what the file has now: `slotFrames` frames, at least as many as the stretch, all behind it zero.
  /// Waits for the disk, or for another thread that reads the same. Gives nothing if the file cannot be opened, if the
  /// stretch is empty, or without memory.
  static Share share(const std::shared_ptr<WaveStore>& store, const PcmFile& file, const WaveStretch& stretch,
                     std::size_t slotFrames);

 private:
  Share holdOrRead(const std::shared_ptr<WaveStore>& self, platform::InputFile& file, const Content& content);
  void letGo(Copies::iterator copy);

  std::shared_ptr<SampleMemory> memory;
  std::mutex mutex;  ///< Of all below, but for the samples.
  std::condition_variable hasRead;
  Copies copies;
};

}  // namespace tesh::bramel::plugin::sivray
