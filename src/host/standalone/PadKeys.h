// The computer's keys as pads: A S D F G H J K strike the eight pads from left to right.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <utility>

#include "viewmodels/texts/PanelMacros.h"

namespace tesh::bramel::standalone {

/// Turns keys into notes: one note-on when a key goes down, however often it repeats, and one note-off when it comes
/// up. Message thread only.
class PadKeys {
 public:
  static constexpr std::array<int, panel::kPads> kKeys{'a', 's', 'd', 'f', 'g', 'h', 'j', 'k'};

  /// Called with a pad's note, and true for its beginning.
  using Strike = std::function<void(int note, bool isOn)>;

  explicit PadKeys(Strike newStrike) : strike(std::move(newStrike)) {}

  /// True for the letter of a pad, upper or lower case.
  static bool isPadKey(int key);

  /// Call after any key has moved. `isDown` tells whether a key of kKeys is down. While `mayStrike` is false, as in a
  /// text field, keys that go down are ignored until they have come up again; keys that already sound still end their
  /// notes.
  void keysMoved(const std::function<bool(int key)>& isDown, bool mayStrike);

  /// Ends all notes, for example when the window has lost the keyboard focus.
  void releaseAll();

 private:
  struct Key {
    bool isDown = false;
    bool isSounding = false;
  };

  void end(std::size_t pad);

  Strike strike;
  std::array<Key, kKeys.size()> keys{};
};

}  // namespace tesh::bramel::standalone
