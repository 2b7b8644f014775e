// Hears the computer's keys wherever the focus stands in the program's window, and leaves them to text fields and
// lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

#include "host/standalone/PadKeys.h"

namespace tesh::bramel::standalone {

/// A list with the focus takes the letters; the space bar stays the demo's. Message thread only.
class PadKeyboard final : private juce::KeyListener, private juce::FocusChangeListener {
 public:
  /// `window` outlives this object. `toggleDemo` hears the space bar.
  PadKeyboard(juce::Component& window, PadKeys::Strike strike, std::function<void()> toggleDemo);
  ~PadKeyboard() override;

  /// When the window has lost the keyboard.
  void releaseAll() { keys.releaseAll(); }

 private:
  bool keyPressed(const juce::KeyPress& key, juce::Component* origin) override;
  bool keyStateChanged(bool isKeyDown, juce::Component* origin) override;
  void globalFocusChanged(juce::Component* focused) override;

  juce::Component& top;
  juce::Component::SafePointer<juce::Component> listenedTo;  ///< The component that has the focus, beside `top`.
  PadKeys keys;
  std::function<void()> onSpace;
};

}  // namespace tesh::bramel::standalone
