// Whether values that come from the host may be those that it was told of an earlier program.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Some hosts send the values that they are told back with a later block. Where the host has chosen another program in
/// between, they would overwrite it. Any thread.
class HostEchoes {
 public:
  /// The host is told values.
  void valuesTold() { blocks = 0; }

  /// The host knows all values: it is told them, or has given a state.
  void allKnown() { areExpected = false; }

  /// The host has chosen a program, of whose values it has not yet been told.
  void programChosen() { areExpected = blocks < kLatest; }

  /// A block begins, before which the host's values for it have come. Audio thread.
  void blockBegins() SIVRAY_NONBLOCKING {
    blocks = std::min(blocks + 1, kLatest);
    if (blocks == kLatest) {
      areExpected = false;
    }
  }

  /// Whether a value that equals what the host was told last is such a one.
  bool mayCome() const { return areExpected; }

 private:
  /// Blocks after the telling with whose values they come at the latest.
  static constexpr int kLatest = 2;

  std::atomic<int> blocks = kLatest;  ///< Since the host was told values, up to kLatest.
  std::atomic<bool> areExpected = false;
};

}  // namespace tesh::bramel::vst
