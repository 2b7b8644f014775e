// The last that happened to a note, short enough for one atomic access.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// None, one, or the last two of alternating ons and offs: the end decides what is lit, and a stroke that has ended
/// already is still seen.
struct NoteHistory {
  std::uint8_t length = 0;  ///< 0 to 2.
  bool isLastOn = false;

  constexpr NoteHistory followedBy(bool isOn) const {
    if (length != 0 && isLastOn == isOn) {
      return *this;
    }
    return {static_cast<std::uint8_t>(length == 0 ? 1 : 2), isOn};
  }
};

}  // namespace tesh::bramel::vst
