// Leaves the keys to the host while the mouse plays on the panel, and takes them for a text field that has the focus.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel::vst {

/// For one open editor. A window of JUCE would swallow all keys while the mouse is over it, and take the focus with
/// each click. This returns the focus to the host's window that had it before, often another one than the editor's
/// parent. Message thread only; `top` is on the desktop inside `hostWindow` and outlives this object.
class HostKeyboard final : private juce::MouseListener, private juce::FocusChangeListener, private juce::AsyncUpdater {
 public:
  HostKeyboard(juce::Component& top, void* hostWindow);
  ~HostKeyboard() override;

 private:
  void mouseEnter(const juce::MouseEvent&) override;
  void mouseUp(const juce::MouseEvent&) override { triggerAsyncUpdate(); }
  void globalFocusChanged(juce::Component*) override { triggerAsyncUpdate(); }
  void handleAsyncUpdate() override;
  void rememberHostsFocus();
  bool isTextFocused() const;
  void lookAgainAfter(juce::Component& modal);

  juce::Component& top;
  void* lastFocused;  ///< Had the focus before the panel; the host's window until another is seen.
  juce::Component::SafePointer<juce::Component> watchedModal;
  JUCE_DECLARE_WEAK_REFERENCEABLE(HostKeyboard)
};

}  // namespace tesh::bramel::vst
