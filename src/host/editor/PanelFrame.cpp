// Makes the view, and again when the scale needs another set of pictures.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/PanelFrame.h"

#include <cmath>

#include "core/Boxed.h"
#include "views/IContinuedView.h"

namespace tesh::bramel::vst {

int scaledLength(int length, float scale) {
  return static_cast<int>(std::lround(static_cast<double>(length) * static_cast<double>(scale)));
}

PanelFrame::PanelFrame(BramelInstrumentEditor& shownEditor) : editor(shownEditor) {
  setOpaque(true);
  constexpr auto kSize = BramelInstrumentEditor::getEditorSize();
  setBounds(0, 0, kSize.width, kSize.height);
}

PanelFrame::~PanelFrame() {
  keyboard.reset();
  hide();
}

bool PanelFrame::showFor(float scale) {
  const int wanted = scale > 1.0F ? 2 : 1;
  if (wanted != imageScale && editor.messageThread() != nullptr) {
    const Continuation asBefore = continuationOf(view.get());
    hide();
    const auto box = editor.createView(wanted);
    if (const auto* const made = cofu::core::boxed::valueIn<std::shared_ptr<juce::Component>>(box)) {
      view = *made;
    }
    if (view == nullptr) {
      editor.closeView();  // Without a view nothing would ever close the model, which would still get all reports.
    } else {
      imageScale = wanted;
      addAndMakeVisible(*view);
      asBefore(*view);
    }
  }
  setVisible(view != nullptr);
  return view != nullptr;
}

void PanelFrame::hide() {
  if (view != nullptr) {
    juce::PopupMenu::dismissAllActiveMenus();  // Menus have windows of their own, which would stay open.
    removeChildComponent(view.get());
    view.reset();
    imageScale = 0;
    editor.closeView();
  }
}

void PanelFrame::takeKeys(juce::Component& top, void* hostWindow) {
  keyboard.reset();
  if (hostWindow != nullptr) {
    keyboard = std::make_unique<HostKeyboard>(top, hostWindow);
  }
}

}  // namespace tesh::bramel::vst
