// The last one or two events of a note, in a form short enough for one atomic access.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// Holds no event, one, or two: ons and offs in turn. The last one decides whether the key is lit; the one before it
/// lets the editor also show a stroke that ended before it looked.
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
