// Lays out strip, panel and pop-ups on top of each other.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/ProgramWindow.h"

#include <utility>

#include "host/editor/PanelFrame.h"
#include "widgets/PanelColours.h"

namespace tesh::bramel::standalone {

namespace {

constexpr const char* kPadTitle = "Pad ";

/// The panel's pad that contains the component; null for none.
juce::Component* padOf(juce::Component* component) {
  while (component != nullptr && !component->getTitle().startsWith(kPadTitle)) {
    component = component->getParentComponent();
  }
  return component;
}

/// Frames the place where files would be dropped.
class DropMark final : public juce::Component {
 public:
  DropMark() { setInterceptsMouseClicks(false, false); }

  void paint(juce::Graphics& graphics) override {
    constexpr float kThickness = 2.0F;
    constexpr float kCorner = 6.0F;
    graphics.setColour(juce::Colour(colours::kAmber));
    graphics.drawRoundedRectangle(getLocalBounds().toFloat().reduced(kThickness), kCorner, kThickness);
  }
};

}  // namespace

/// In screen pixels. The strip is in a slot that covers the panel too, so that its pop-ups darken both.
class ProgramWindow::Content : public juce::Component, public juce::FileDragAndDropTarget {
 public:
  Content(std::unique_ptr<TransportStrip> newStrip, std::unique_ptr<juce::AudioProcessorEditor> newEditor,
          float newScale, const Events& newEvents)
      : events(newEvents), scale(newScale), strip(std::move(newStrip)) {
    setEditor(std::move(newEditor));
    slot.setInterceptsMouseClicks(false, true);
    slot.setSize(editor->getWidth(), TransportStrip::kHeight + editor->getHeight());
    setScale(scale);
    strip->setBounds(0, 0, slot.getWidth(), TransportStrip::kHeight);
    slot.addAndMakeVisible(*strip);
    addAndMakeVisible(slot);
    addChildComponent(*mark);
    setOpaque(true);
  }

  void setEditor(std::unique_ptr<juce::AudioProcessorEditor> newEditor) {
    editor = std::move(newEditor);
    if (editor != nullptr) {
      editor->setScaleFactor(scale);
      editor->setTopLeftPosition(0, TransportStrip::kHeight);
      addAndMakeVisible(*editor, 0);
    }
  }

  void setScale(float newScale) {
    scale = newScale;
    if (editor != nullptr) {
      editor->setScaleFactor(scale);
    }
    slot.setTransform(juce::AffineTransform::scale(scale));
    setSize(vst::scaledLength(slot.getWidth(), scale), vst::scaledLength(slot.getHeight(), scale));
  }

  void paint(juce::Graphics& graphics) override { graphics.fillAll(juce::Colour(colours::kNight)); }

  bool isInterestedInFileDrag(const juce::StringArray& /*files*/) override { return events.dropped != nullptr; }
  void fileDragEnter(const juce::StringArray& /*files*/, int x, int y) override { showMark({x, y}); }
  void fileDragMove(const juce::StringArray& /*files*/, int x, int y) override { showMark({x, y}); }
  void fileDragExit(const juce::StringArray& /*files*/) override { mark->setVisible(false); }
  void filesDropped(const juce::StringArray& files, int x, int y) override {
    mark->setVisible(false);
    const juce::Component* const pad = padUnder({x, y});
    events.dropped(files, pad == nullptr ? std::nullopt : std::optional(pad->getTitle().getTrailingIntValue() - 1));
  }

  juce::Component* padUnder(juce::Point<int> place) {
    return editor == nullptr ? nullptr : padOf(editor->getComponentAt(editor->getLocalPoint(this, place)));
  }

  void showMark(juce::Point<int> place) {
    const juce::Component* const pad = padUnder(place);
    mark->setBounds(pad == nullptr ? getLocalArea(&slot, strip->getBounds())
                                   : getLocalArea(pad, pad->getLocalBounds()));
    mark->setVisible(true);
    mark->toFront(false);
  }

  const Events& events;
  float scale;
  std::unique_ptr<juce::AudioProcessorEditor> editor;
  BWPopupSlotView slot;
  std::unique_ptr<TransportStrip> strip;
  std::unique_ptr<juce::Component> mark = std::make_unique<DropMark>();
};

ProgramWindow::ProgramWindow(std::unique_ptr<TransportStrip> strip, std::unique_ptr<juce::AudioProcessorEditor> editor,
                             float scale, Events newEvents)
    : DocumentWindow("Sivray", juce::Colour(colours::kNight), minimiseButton | closeButton),
      events(std::move(newEvents)),
      content(std::make_unique<Content>(std::move(strip), std::move(editor), scale, events)) {
  setUsingNativeTitleBar(true);
  setResizable(false, false);
  setContentNonOwned(content.get(), true);
}

ProgramWindow::~ProgramWindow() {
  isOpen = false;
  if (juce::ComponentPeer* const peer = getPeer()) {
    peer->removeScaleFactorListener(this);
  }
  juce::PopupMenu::dismissAllActiveMenus();
  clearContentComponent();
}

void ProgramWindow::open(std::optional<juce::Point<int>> position) {
  const auto place = position ? getBounds().withPosition(*position) : juce::Rectangle<int>();
  if (juce::Desktop::getInstance().getDisplays().getRectangleList(true).containsRectangle(place) && position) {
    setTopLeftPosition(*position);
  } else {
    centreWithSize(getWidth(), getHeight());
  }
  setVisible(true);
  juce::ComponentPeer& peer = *getPeer();
  peer.addScaleFactorListener(this);
  nativeScaleFactorChanged(peer.getPlatformScaleFactor());
  isOpen = true;
}

void ProgramWindow::setEditor(std::unique_ptr<juce::AudioProcessorEditor> editor) {
  content->setEditor(std::move(editor));
}

void ProgramWindow::setScale(float scale) { content->setScale(scale); }

TransportStrip& ProgramWindow::strip() { return *content->strip; }

void ProgramWindow::closeButtonPressed() { events.closed(); }

void ProgramWindow::moved() {
  DocumentWindow::moved();
  if (isOpen) {
    events.moved(getPosition());
  }
}

void ProgramWindow::activeWindowStatusChanged() {
  DocumentWindow::activeWindowStatusChanged();
  if (isOpen && !isActiveWindow()) {
    events.deactivated();
  }
}

}  // namespace tesh::bramel::standalone
