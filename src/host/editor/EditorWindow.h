// The panel inside a host's window, at any scale.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/editor/HostKeyboard.h"
#include "views/BWPopupSlotView.h"

namespace tesh::bramel::vst {

/// Stands on the desktop, in the screen's pixels; the slot and all above it keep the panel's own. Message thread only.
class EditorWindow final : public juce::Component {
 public:
  /// Shows `view` in the host's window `hostWindow`, 1.0 of `scale` being the panel's own size.
  EditorWindow(void* hostWindow, std::shared_ptr<juce::Component> view, float scale);

  /// Shuts the menus that are open, and lets the view go.
  ~EditorWindow() override;

  void setScale(float scale);
  juce::Component& panel() const { return *view; }

  std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;

 private:
  std::shared_ptr<juce::Component> view;
  std::unique_ptr<BWPopupSlotView> slotView;
  std::unique_ptr<HostKeyboard> keyboard;
};

/// Pixels of the screen that `length` pixels of the panel take at a scale.
int scaledLength(int length, float scale);

}  // namespace tesh::bramel::vst
