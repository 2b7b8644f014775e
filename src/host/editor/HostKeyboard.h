// Leaves the keys to the host, except while a text field has the focus.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel::vst {

/// For one open editor. A JUCE window would get all keys while the mouse is over it, and take the focus with each
/// click. This object returns the focus to the host's window that had it before, which is often not the editor's
/// parent. Message thread only; `top` has a native window inside `hostWindow` and outlives this object.
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
  void* lastFocused;  ///< The window that had the focus before the panel; the host's window until another one was seen.
  juce::Component::SafePointer<juce::Component> watchedModal;
  JUCE_DECLARE_WEAK_REFERENCEABLE(HostKeyboard)
};

}  // namespace tesh::bramel::vst
