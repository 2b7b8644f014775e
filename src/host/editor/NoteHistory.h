// The last one or two events of a note, in a form short enough for one atomic access.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// No event, one, or two that alternate between on and off. The last one tells whether the key is lit. The one before
/// it lets the editor show a note that began and ended between two looks.
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
