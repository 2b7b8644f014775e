// The panel in any kind of window: the view, drawn from the set of pictures that fits the scale, and its keyboard.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

#include "host/editor/BramelInstrumentEditor.h"
#include "host/editor/HostKeyboard.h"
#include "views/BWPopupSlotView.h"

namespace tesh::bramel::vst {

/// Keeps the panel's own size; the window around it scales it. One per editor at a time. Message thread only.
class PanelFrame final : public BWPopupSlotView {
 public:
  /// Starts without a view. `shownEditor` outlives this object.
  explicit PanelFrame(BramelInstrumentEditor& shownEditor);

  /// Closes open menus and destroys the view.
  ~PanelFrame() override;

  /// Shows the panel for a window in which one pixel of the panel takes `scale` by `scale` screen pixels. Above 1 the
  /// larger set of pictures is drawn. A view that has to be remade shows the same page and list as the one before.
  /// False if there is no view; this component is then invisible.
  bool showFor(float scale);

  /// Lets the text fields in `top`, which contains this component, take keys from the host's window; with a null
  /// window, no longer.
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
