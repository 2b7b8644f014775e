// Follows JUCE's focus changes and moves the window's keyboard focus to match.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/HostKeyboard.h"

#include "host/editor/WindowKeys.h"

namespace tesh::bramel::vst {

HostKeyboard::HostKeyboard(juce::Component& newTop, void* newHostWindow) : top(newTop), lastFocused(newHostWindow) {
  top.addMouseListener(this, true);
  juce::Desktop::getInstance().addFocusChangeListener(this);
  handleAsyncUpdate();
}

HostKeyboard::~HostKeyboard() {
  juce::Desktop::getInstance().removeFocusChangeListener(this);
  top.removeMouseListener(this);
}

void HostKeyboard::mouseEnter(const juce::MouseEvent&) {
  rememberHostsFocus();
  triggerAsyncUpdate();  // A pop-up that a click has closed gets no mouseUp; the mouse then enters the component below
                         // it.
}

void HostKeyboard::handleAsyncUpdate() {
  juce::ComponentPeer* const peer = top.getPeer();
  if (peer == nullptr) {
    return;
  }
  if (juce::Component* const modal = juce::Component::getCurrentlyModalComponent()) {
    lookAgainAfter(*modal);
    if (!top.isParentOf(modal)) {
      return;
    }
  }
  const bool isTyping = isTextFocused();
  setTakesKeys(peer->getNativeHandle(), isTyping);
  if (!isTyping && hasKeyboardFocus(peer->getNativeHandle())) {
    juce::Component::unfocusAllComponents();
    giveKeyboardFocusTo(lastFocused);
  }
}

void HostKeyboard::rememberHostsFocus() {
  juce::ComponentPeer* const peer = top.getPeer();
  if (void* const focused = peer == nullptr ? nullptr : focusedBeside(peer->getNativeHandle())) {
    lastFocused = focused;
  }
}

bool HostKeyboard::isTextFocused() const {
  juce::Component* const focused = juce::Component::getCurrentlyFocusedComponent();
  return dynamic_cast<juce::TextEditor*>(focused) != nullptr && top.isParentOf(focused);
}

void HostKeyboard::lookAgainAfter(juce::Component& modal) {
  if (watchedModal == &modal) {
    return;
  }
  watchedModal = &modal;
  const auto lookAgain = [own = juce::WeakReference<HostKeyboard>(this)](int) {
    if (own != nullptr) {
      own->triggerAsyncUpdate();
    }
  };
  juce::ModalComponentManager::getInstance()->attachCallback(&modal, juce::ModalCallbackFunction::create(lookAgain));
}

}  // namespace tesh::bramel::vst
