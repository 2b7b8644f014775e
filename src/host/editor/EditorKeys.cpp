// Translates the host's key codes to JUCE's and decides whether the panel takes them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/EditorKeys.h"

namespace tesh::bramel::vst {
namespace {

// The bits of VstKeyCode::modifier.
constexpr int kShift = 1;
constexpr int kAlternate = 2;
constexpr int kCommand = 4;
constexpr int kControl = 8;

constexpr int kBackspace = 8;
constexpr int kFirstPrintable = 32;
constexpr int kLastPrintable = 126;

int modifiersOf(const VstKeyCode& keyCode) {
  int flags = 0;
  if ((keyCode.modifier & kShift) != 0) {
    flags |= juce::ModifierKeys::shiftModifier;
  }
  if ((keyCode.modifier & kAlternate) != 0) {
    flags |= juce::ModifierKeys::altModifier;
  }
  if ((keyCode.modifier & (kCommand | kControl)) != 0) {
    flags |= juce::ModifierKeys::ctrlModifier;
  }
  return flags;
}

bool isForText(int character) {
  return character == kBackspace || (character >= kFirstPrintable && character <= kLastPrintable);
}

}  // namespace

bool EditorKeys::keyDown(const VstKeyCode& keyCode) {
  auto* const text = dynamic_cast<juce::TextEditor*>(juce::Component::getCurrentlyFocusedComponent());
  if (text == nullptr) {
    return false;
  }
  if (isForText(keyCode.character)) {
    return text->keyPressed(
        juce::KeyPress(keyCode.character, modifiers, static_cast<juce::juce_wchar>(keyCode.character)));
  }
  const int pressed = modifiersOf(keyCode);
  modifiers = modifiers.withFlags(pressed);
  return pressed != 0;
}

bool EditorKeys::keyUp(const VstKeyCode& keyCode) {
  if (keyCode.character != 0) {
    return true;
  }
  const int released = modifiersOf(keyCode);
  modifiers = modifiers.withoutFlags(released);
  return released != 0;
}

}  // namespace tesh::bramel::vst
