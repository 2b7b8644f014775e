// Sizes the panel to the window's scale and keeps the keyboard focus inside it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/EditorWindow.h"

#include <cmath>
#include <utility>

namespace tesh::bramel::vst {

int scaledLength(int length, float scale) {
  return static_cast<int>(std::lround(static_cast<double>(length) * static_cast<double>(scale)));
}

EditorWindow::EditorWindow(void* hostWindow, std::shared_ptr<juce::Component> newView, float scale)
    : view(std::move(newView)), slotView(std::make_unique<BWPopupSlotView>()) {
  setOpaque(true);
  slotView->setOpaque(true);
  slotView->setBounds(view->getBounds());
  slotView->addAndMakeVisible(*view);
  addAndMakeVisible(*slotView);
  setScale(scale);
  setVisible(true);
  addToDesktop(0, hostWindow);
  keyboard = std::make_unique<HostKeyboard>(*this, hostWindow);
}

EditorWindow::~EditorWindow() {
  juce::PopupMenu::dismissAllActiveMenus();  // Their windows are their own, and would stay.
  keyboard.reset();
  slotView->removeChildComponent(view.get());
}

void EditorWindow::setScale(float scale) {
  slotView->setTransform(juce::AffineTransform::scale(scale));
  setSize(scaledLength(slotView->getWidth(), scale), scaledLength(slotView->getHeight(), scale));
}

std::unique_ptr<juce::ComponentTraverser> EditorWindow::createKeyboardFocusTraverser() {
  return slotView->createKeyboardFocusTraverser();
}

}  // namespace tesh::bramel::vst
