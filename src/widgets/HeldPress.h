// Remembers the press that holds a control, so that a second finger, or a pen beside the mouse, is ignored until it
// ends.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <optional>

namespace tesh::bramel {

/// Message thread only.
class HeldPress {
 public:
  /// False while another press holds the control.
  bool begin(const juce::MouseEvent& event) {
    if (source) {
      return false;
    }
    source = event.source;
    return true;
  }
  /// True for the release of the press that holds the control, which it ends.
  bool end(const juce::MouseEvent& event) {
    const bool isOurs = isOf(event);
    if (isOurs) {
      source.reset();
    }
    return isOurs;
  }
  bool isOf(const juce::MouseEvent& event) const { return source && *source == event.source; }
  bool isHeld() const { return source.has_value(); }

 private:
  std::optional<juce::MouseInputSource> source;
};

}  // namespace tesh::bramel
