// How effects with long delay lines borrow them from a shared pool.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/Silence.h"

namespace tesh::bramel::plugin::sivray::effects {

class SivrayFxMemoryUser;

/// Hands out delay memory.
class SivrayFxMemoryAssigner {
 public:
  virtual ~SivrayFxMemoryAssigner() = default;

  /// Returns an area for `user`, never the one of the previous call. Its first `requiredSamples` are zero; the rest may
  /// be the lines of another user. Audio thread; a user calls it first in its `reset`.
  virtual std::int16_t* acquire(SivrayFxMemoryUser& user) SIVRAY_NONBLOCKING = 0;

  /// Must be called before `user` writes `count` samples to each of its lines, which are rings, from index `from` on.
  /// Returns false if another user has acquired the area or written to it since, so that it may hold anything. Audio
  /// thread.
  virtual bool noteWrites(const SivrayFxMemoryUser& user, std::size_t from, std::size_t count) SIVRAY_NONBLOCKING = 0;

  /// Registers a user and makes room for it. Only during construction: it invalidates areas that were acquired before.
  virtual void add(SivrayFxMemoryUser* user) = 0;
};

/// An effect that borrows delay memory. Its lines have equal lengths and are stored one after another.
class SivrayFxMemoryUser {
 public:
  explicit SivrayFxMemoryUser(std::size_t samplesPerLine) : lineLength(samplesPerLine) {}
  virtual ~SivrayFxMemoryUser() = default;

  /// The number of 16-bit samples that the effect needs.
  virtual std::size_t requiredSamples() const SIVRAY_NONBLOCKING = 0;

  const std::size_t lineLength;                ///< Samples.
  SivrayFxMemoryAssigner* assigner = nullptr;  ///< Set by `SivrayFxMemoryAssigner::add`.
  std::uint32_t bank = 0;                      ///< Number of the acquired area; used by the assigner only.
};

/// `kCount` delay lines in such an area: rings of `kLength` samples, a power of two, to which every sample writes one
/// sample.
template <unsigned kCount, unsigned kLength>
struct BorrowedLines {
  static constexpr unsigned kLineLength = kLength;
  static constexpr std::size_t kRequiredSamples = kCount * kLength;

  std::int16_t* line(unsigned index) const { return lines + index * kLength; }

  /// Whether the last `count` samples of each line are zero.
  bool isSilent(unsigned count) const {
    for (unsigned index = 0; index < kCount; ++index) {
      if (!isZeroBefore(line(index), kLength, writeIndex, count)) {
        return false;
      }
    }
    return true;
  }

  void moveOn(unsigned count) { writeIndex = (writeIndex + count) & (kLength - 1); }

  std::int16_t* lines = nullptr;
  unsigned writeIndex = 0;  ///< Index that the next sample writes.
};

}  // namespace tesh::bramel::plugin::sivray::effects
