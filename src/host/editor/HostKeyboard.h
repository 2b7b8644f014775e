// Leaves the keys to the host while the mouse plays on the panel, and takes them for a text field that has the focus.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel::vst {

/// For one open editor. A window of JUCE would swallow all keys while the mouse is over it, and take the focus with
/// each click. Message thread only; `top` is on the desktop inside `hostWindow` and outlives this object.
class HostKeyboard final : private juce::MouseListener, private juce::FocusChangeListener, private juce::AsyncUpdater {
 public:
  HostKeyboard(juce::Component& top, void* hostWindow);
  ~HostKeyboard() override;

 private:
  void mouseUp(const juce::MouseEvent&) override { triggerAsyncUpdate(); }
  void globalFocusChanged(juce::Component*) override { triggerAsyncUpdate(); }
  void handleAsyncUpdate() override;
  bool isTextFocused() const;
  void lookAgainAfter(juce::Component& modal);

  juce::Component& top;
  void* hostWindow;
  juce::Component::SafePointer<juce::Component> watchedModal;
  JUCE_DECLARE_WEAK_REFERENCEABLE(HostKeyboard)
};

}  // namespace tesh::bramel::vst
