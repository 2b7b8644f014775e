// How an effect with long delay lines borrows them from the pool that all such effects share.
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

  /// Returns an area for `user`, never the one that the last call gave. Its first `requiredSamples` are
  /// zero; what lies behind may be the lines of another user. Audio thread; a user calls it first in its `reset`.
  virtual std::int16_t* acquire(SivrayFxMemoryUser& user) SIVRAY_NONBLOCKING = 0;

  /// Must be called before `user` writes `count` samples to each of its lines, which are rings, from index `from` on.
  /// Returns false if another user has got or written to the area since this one did, so that it may hold anything.
  /// Audio thread.
  virtual bool noteWrites(const SivrayFxMemoryUser& user, std::size_t from, std::size_t count) SIVRAY_NONBLOCKING = 0;

  /// Registers a user and makes room for it. Construction only: areas handed out before become invalid.
  virtual void add(SivrayFxMemoryUser* user) = 0;
};

/// An effect that borrows delay memory. Its lines have equal lengths and lie one after another.
class SivrayFxMemoryUser {
 public:
  explicit SivrayFxMemoryUser(std::size_t samplesPerLine) : lineLength(samplesPerLine) {}
  virtual ~SivrayFxMemoryUser() = default;

  /// The number of 16-bit samples that the effect needs.
  virtual std::size_t requiredSamples() const SIVRAY_NONBLOCKING = 0;

  const std::size_t lineLength;                ///< Samples.
  SivrayFxMemoryAssigner* assigner = nullptr;  ///< Set by `SivrayFxMemoryAssigner::add`.
  std::uint32_t bank = 0;  ///< Number of the area that the assigner gave; only the assigner uses it.
};

/// `kCount` delay lines in such an area: rings of `kLength` samples, a power of two, into which every sample writes
/// one.
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
  unsigned writeIndex = 0;  ///< Where the next sample writes.
};

}  // namespace tesh::bramel::plugin::sivray::effects
