// One state per MIDI note, which the editor sets and a controller's key lights show.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>

namespace tesh::bramel::vst {

/// Any thread; no block is waited for. A report may read and set states. Notes outside 0 to kKeys - 1 read as 0 and
/// change nothing.
class KeyStates {
 public:
  static constexpr int kKeys = 128;

  /// What each note has until the editor sets it. The controllers' protocol numbers its lights so.
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

  /// The same for all notes in ascending order, under one lock.
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
