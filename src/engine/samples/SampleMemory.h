// The sample memory of all instances in the process. Voices address a frame by its number from one start, so all of the
// memory lies in one range of addresses. The system provides each page when it is first written.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "platform/AddressRange.h"

namespace tesh::bramel::plugin::sivray {

/// Any thread but the audio thread, which may only read and write areas that it was given.
class SampleMemory {
 public:
  /// The process's memory, made for the first holder and freed with the last one. Throws std::bad_alloc.
  static std::shared_ptr<SampleMemory> ofProcess();

  SampleMemory();

  /// A stretch of interleaved stereo frames, initially all zero.
  class Area {
   public:
    Area() = default;
    Area(Area&& other) noexcept;
    Area& operator=(Area&& other) noexcept;
    ~Area();

    /// Null for an empty area.
    std::int16_t* samples() const { return start; }

    /// Provides the pages of the first `frames` frames in one call, see platform::ZeroedPages.
    void makePresent(std::size_t frames) const;

   private:
    friend class SampleMemory;
    std::shared_ptr<SampleMemory> memory;
    std::int16_t* start = nullptr;
    std::size_t bytes = 0;
  };

  /// Takes an area of at least `frames` frames, more than 0. Throws std::bad_alloc.
  static Area take(const std::shared_ptr<SampleMemory>& memory, std::size_t frames);

  /// Frame number 0.
  const std::int16_t* base() const { return start; }

  /// Two silent frames.
  const std::int16_t* silence() const { return start; }

 private:
  std::int16_t* takeBytes(std::size_t bytes);
  void giveBack(const std::int16_t* samples, std::size_t bytes);

  platform::AddressRange range;
  std::mutex mutex;  ///< Guards `vacant`.
  /// First byte and length in bytes of each gap; neighbouring gaps are merged.
  std::map<std::size_t, std::size_t> vacant;
  const std::int16_t* start;
};

}  // namespace tesh::bramel::plugin::sivray
