// Puts the view into JUCE's editor and follows the window that contains it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/SivrayProcessorEditor.h"

#include "host/editor/WindowKeys.h"
#ifdef __linux__
#include "host/message/X11Connection.h"
#endif

namespace tesh::bramel::vst {
namespace {

void prepareWindows() {
#ifdef __linux__
  internWindowManagerAtoms();
  openConnection();
#endif
}

}  // namespace

SivrayProcessorEditor::SivrayProcessorEditor(SivrayProcessor& ownProcessor)
    : AudioProcessorEditor(ownProcessor), owner(ownProcessor) {
  prepareWindows();
  setOpaque(true);
  if (owner.panel() != nullptr) {
    frame = std::make_unique<PanelFrame>(*owner.panel());
    addChildComponent(*frame);
  }
  showPanel();
  constexpr auto kSize = BramelInstrumentEditor::getEditorSize();
  setSize(kSize.width, kSize.height);
}

void SivrayProcessorEditor::showPanel() {
  if (frame != nullptr) {
    frame->showFor(scale * screenScale);
  }
}

void SivrayProcessorEditor::setScaleFactor(float newScale) {
  AudioProcessorEditor::setScaleFactor(newScale);
  scale = newScale;
  showPanel();
}

void SivrayProcessorEditor::setScreenScale(float newScale) {
  screenScale = newScale;
  showPanel();
}

void SivrayProcessorEditor::leaveKeysToHost(bool leavesKeys) {
  leavesKeysToHost = leavesKeys;
  parentHierarchyChanged();
}

void SivrayProcessorEditor::paint(juce::Graphics& graphics) {
  constexpr int kMargin = 40;
  constexpr float kTextHeight = 18.0F;
  constexpr int kMostLines = 16;
  graphics.fillAll(juce::Colours::black);
  graphics.setColour(juce::Colours::white);
  graphics.setFont(kTextHeight);
  graphics.drawFittedText(juce::String::fromUTF8(owner.fault().c_str()), getLocalBounds().reduced(kMargin),
                          juce::Justification::centred, kMostLines, 1.0F);
}

void SivrayProcessorEditor::parentHierarchyChanged() {
  juce::ComponentPeer* const peer = getPeer();
  void* const window = peer == nullptr || !leavesKeysToHost ? nullptr : peer->getNativeHandle();
  if (window == keyboardWindow || frame == nullptr) {
    return;
  }
  frames.reset();
  keyboardWindow = window;
  frame->takeKeys(*this, window == nullptr ? nullptr : parentOf(window));
  if (window != nullptr) {
    frames = std::make_unique<juce::VBlankAttachment>(this, [this] { awakenForQueuedEvents(keyboardWindow); });
  }
}

std::unique_ptr<juce::ComponentTraverser> SivrayProcessorEditor::createKeyboardFocusTraverser() {
  return frame == nullptr ? AudioProcessorEditor::createKeyboardFocusTraverser()
                          : frame->createKeyboardFocusTraverser();
}

}  // namespace tesh::bramel::vst
