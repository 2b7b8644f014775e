// One state per MIDI note, which the editor sets and a controller's key lights show.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>

namespace tesh::bramel::vst {

/// Any thread; never waits for a block. A report may read and set states. For notes outside 0 to kKeys - 1, reads
/// return 0 and writes change nothing.
class KeyStates {
 public:
  static constexpr int kKeys = 128;

  /// The state of each note until the editor sets it. The lit keyboards' protocol uses 9 for a key at rest.
  static constexpr std::uint32_t kAtRest = 9;

  KeyStates() { states.fill(kAtRest); }

  std::uint32_t state(int note) const {
    const std::lock_guard lock(mutex);
    return isKey(note) ? states[static_cast<std::size_t>(note)] : 0;
  }

  /// Sets one state and, with the lock held, calls `report(note)`.
  template <typename Report>
  void set(int note, std::uint32_t state, Report report) {
    const std::lock_guard lock(mutex);
    if (isKey(note)) {
      states[static_cast<std::size_t>(note)] = state;
      report(note);
    }
  }

  /// As above, for all notes in ascending order, under one lock.
  template <typename Report>
  void setAll(std::uint32_t state, Report report) {
    const std::lock_guard lock(mutex);
    for (int note = 0; note < kKeys; ++note) {
      set(note, state, report);
    }
  }

 private:
  static constexpr bool isKey(int note) { return note >= 0 && note < kKeys; }

  mutable std::recursive_mutex mutex;
  std::array<std::uint32_t, kKeys> states{};
};

}  // namespace tesh::bramel::vst
