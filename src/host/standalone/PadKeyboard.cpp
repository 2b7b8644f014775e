// Follows the focus, so that the pads' keys are seen before the focused component gets them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/PadKeyboard.h"

#include <utility>

#include "widgets/BWSimpleListView.h"

namespace tesh::bramel::standalone {
namespace {

/// A text field has the focus, or a dialog is open.
bool isTyping() {
  return dynamic_cast<juce::TextEditor*>(juce::Component::getCurrentlyFocusedComponent()) != nullptr ||
         juce::Component::getCurrentlyModalComponent() != nullptr;
}

/// A list has the focus, which searches names by letters.
bool isSeeking() {
  const auto* const focused = juce::Component::getCurrentlyFocusedComponent();
  return focused != nullptr && focused->findParentComponentOfClass<BWSimpleListView>() != nullptr;
}

bool isCommand(juce::ModifierKeys modifiers) {
  return modifiers.isCtrlDown() || modifiers.isAltDown() || modifiers.isCommandDown();
}

}  // namespace

PadKeyboard::PadKeyboard(juce::Component& window, PadKeys::Strike strike, std::function<void()> toggleDemo)
    : top(window), keys(std::move(strike)), onSpace(std::move(toggleDemo)) {
  top.addKeyListener(this);
  juce::Desktop::getInstance().addFocusChangeListener(this);
}

PadKeyboard::~PadKeyboard() {
  juce::Desktop::getInstance().removeFocusChangeListener(this);
  globalFocusChanged(nullptr);
  top.removeKeyListener(this);
}

bool PadKeyboard::keyPressed(const juce::KeyPress& key, juce::Component* /*origin*/) {
  if (isTyping() || isCommand(key.getModifiers())) {
    return false;
  }
  if (key.getKeyCode() == juce::KeyPress::spaceKey) {
    onSpace();
    return true;
  }
  return !isSeeking() && PadKeys::isPadKey(key.getKeyCode());
}

bool PadKeyboard::keyStateChanged(bool /*isKeyDown*/, juce::Component* /*origin*/) {
  keys.keysMoved([](int key) { return juce::KeyPress::isKeyCurrentlyDown(key); },
                 !isTyping() && !isSeeking() && !isCommand(juce::ModifierKeys::currentModifiers));
  return false;
}

void PadKeyboard::globalFocusChanged(juce::Component* focused) {
  if (listenedTo != nullptr) {
    listenedTo->removeKeyListener(this);
  }
  listenedTo = focused != &top ? focused : nullptr;
  if (listenedTo != nullptr) {
    listenedTo->addKeyListener(this);
  }
}

}  // namespace tesh::bramel::standalone
