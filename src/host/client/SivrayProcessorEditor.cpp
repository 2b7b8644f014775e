// Puts the view into JUCE's editor and follows the window that this stands in.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/client/SivrayProcessorEditor.h"

#include "core/Boxed.h"
#include "host/editor/BramelInstrumentEditor.h"
#include "host/editor/WindowKeys.h"
#include "views/IContinuedView.h"
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
  constexpr auto kSize = BramelInstrumentEditor::getEditorSize();
  slotView.setOpaque(true);
  slotView.setBounds(0, 0, kSize.width, kSize.height);
  addAndMakeVisible(slotView);
  showPanel(1);
  setSize(kSize.width, kSize.height);
}

SivrayProcessorEditor::~SivrayProcessorEditor() {
  juce::PopupMenu::dismissAllActiveMenus();  // Their windows are their own, and would stay.
  frames.reset();
  keyboard.reset();
  hidePanel();
}

void SivrayProcessorEditor::showPanel(int imageScale) {
  if (imageScale == shownImageScale || owner.panel() == nullptr || owner.panel()->messageThread() == nullptr) {
    slotView.setVisible(view != nullptr);
    return;
  }
  const Continuation asBefore = continuationOf(view.get());
  hidePanel();
  const auto box = owner.panel()->createView(imageScale);
  if (const auto* const made = cofu::core::boxed::valueIn<std::shared_ptr<juce::Component>>(box)) {
    view = *made;
    shownImageScale = imageScale;
    slotView.addAndMakeVisible(*view);
    asBefore(*view);
  }
  slotView.setVisible(view != nullptr);
}

void SivrayProcessorEditor::hidePanel() {
  if (view != nullptr) {
    slotView.removeChildComponent(view.get());
    view.reset();
    owner.panel()->closeView();
  }
}

void SivrayProcessorEditor::setScaleFactor(float newScale) {
  AudioProcessorEditor::setScaleFactor(newScale);
  scale = newScale;
  showPanel(scale * screenScale > 1.0F ? 2 : 1);
}

void SivrayProcessorEditor::setScreenScale(float newScale) {
  screenScale = newScale;
  showPanel(scale * screenScale > 1.0F ? 2 : 1);
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
  if (window == keyboardWindow) {
    return;
  }
  frames.reset();
  keyboard.reset();
  keyboardWindow = window;
  if (window != nullptr) {
    keyboard = std::make_unique<HostKeyboard>(*this, parentOf(window));
    frames = std::make_unique<juce::VBlankAttachment>(this, [this] { awakenForQueuedEvents(keyboardWindow); });
  }
}

std::unique_ptr<juce::ComponentTraverser> SivrayProcessorEditor::createKeyboardFocusTraverser() {
  return slotView.createKeyboardFocusTraverser();
}

}  // namespace tesh::bramel::vst
