// Passes the host's key events to the text field that has the focus.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

/// Message thread only.
class EditorKeys {
 public:
  /// True if the text field that has the focus, anywhere in this process's editors, has used the key.
  bool keyDown(const VstKeyCode& keyCode);
  /// True for a character, and where a modifier key was released.
  bool keyUp(const VstKeyCode& keyCode);

 private:
  juce::ModifierKeys modifiers;  ///< Shift, alt and ctrl, as the host reported them.
};

}  // namespace tesh::bramel::vst
