// Tells whether a host may be sending back values of a program that is no longer selected.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <atomic>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// Some hosts send every value that they are told back to the plug-in with a later block (an echo). If the host has
/// chosen another program in between, these values would overwrite that program. Any thread.
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

  /// True if a value from the host is an echo when it equals what the host was told last.
  bool mayCome() const { return areExpected; }

 private:
  /// Echoes come with at most this many blocks after the host was told.
  static constexpr int kLatest = 2;

  std::atomic<int> blocks = kLatest;  ///< Since the host was told values, up to kLatest.
  std::atomic<bool> areExpected = false;
};

}  // namespace tesh::bramel::vst
