// Plays the pads by the computer's keys, wherever the focus is in the program's window, but leaves keys to text fields
// and lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

#include "host/standalone/PadKeys.h"

namespace tesh::bramel::standalone {

/// A list with the focus gets the letters; the space bar always belongs to the demo. Message thread only.
class PadKeyboard final : private juce::KeyListener, private juce::FocusChangeListener {
 public:
  /// `window` outlives this object. `toggleDemo` is called for the space bar.
  PadKeyboard(juce::Component& window, PadKeys::Strike strike, std::function<void()> toggleDemo);
  ~PadKeyboard() override;

  /// Call when the window has lost the keyboard focus.
  void releaseAll() { keys.releaseAll(); }

 private:
  bool keyPressed(const juce::KeyPress& key, juce::Component* origin) override;
  bool keyStateChanged(bool isKeyDown, juce::Component* origin) override;
  void globalFocusChanged(juce::Component* focused) override;

  juce::Component& top;
  juce::Component::SafePointer<juce::Component> listenedTo;  ///< The focused component, unless that is `top`.
  PadKeys keys;
  std::function<void()> onSpace;
};

}  // namespace tesh::bramel::standalone
