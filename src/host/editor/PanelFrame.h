// The panel as every window shows it: its view, from the set of pictures that fits the scale, and its keyboard.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/editor/BramelInstrumentEditor.h"
#include "host/editor/HostKeyboard.h"
#include "views/BWPopupSlotView.h"

namespace tesh::bramel::vst {

/// Has the panel's own size; the window that it stands in scales it. One per editor at a time. Message thread only.
class PanelFrame final : public BWPopupSlotView {
 public:
  /// Without a view. `shownEditor` outlives this object.
  explicit PanelFrame(BramelInstrumentEditor& shownEditor);

  /// Shuts the menus that are open, and lets the view go.
  ~PanelFrame() override;

  /// Shows the panel for a window whose pixels are `scale` by `scale` pixels of the screen to one of the panel: above 1
  /// every picture is drawn from the larger set. A view that is made anew shows what the last one did. False without a
  /// view; this is invisible then.
  bool showFor(float scale);

  /// Lets the text fields in `top` take keys from the host's window, or with null lets them go. `top` holds this.
  void takeKeys(juce::Component& top, void* hostWindow);

 private:
  void hide();

  BramelInstrumentEditor& editor;
  std::shared_ptr<juce::Component> view;
  int imageScale = 0;  ///< Of the view.
  std::unique_ptr<HostKeyboard> keyboard;
};

/// Pixels of the screen that `length` pixels of the panel take at a scale.
int scaledLength(int length, float scale);

}  // namespace tesh::bramel::vst
