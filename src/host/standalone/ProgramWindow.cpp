// Lays strip, panel and pop-ups over one another.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/ProgramWindow.h"

#include <utility>

#include "host/editor/EditorWindow.h"
#include "widgets/PanelColours.h"

namespace tesh::bramel::standalone {

/// In the screen's pixels. The strip stands in a slot that covers the panel too, so that its pop-ups darken all.
class ProgramWindow::Content : public juce::Component {
 public:
  Content(std::unique_ptr<TransportStrip> newStrip, std::unique_ptr<juce::AudioProcessorEditor> newEditor, float scale)
      : editor(std::move(newEditor)), strip(std::move(newStrip)) {
    editor->setScaleFactor(scale);
    editor->setTopLeftPosition(0, TransportStrip::kHeight);
    slot.setInterceptsMouseClicks(false, true);
    slot.setTransform(juce::AffineTransform::scale(scale));
    slot.setSize(editor->getWidth(), TransportStrip::kHeight + editor->getHeight());
    setSize(vst::scaledLength(slot.getWidth(), scale), vst::scaledLength(slot.getHeight(), scale));
    strip->setBounds(0, 0, slot.getWidth(), TransportStrip::kHeight);
    slot.addAndMakeVisible(*strip);
    addAndMakeVisible(*editor);
    addAndMakeVisible(slot);
    setOpaque(true);
  }

  void paint(juce::Graphics& graphics) override { graphics.fillAll(juce::Colour(colours::kNight)); }

  std::unique_ptr<juce::AudioProcessorEditor> editor;
  BWPopupSlotView slot;
  std::unique_ptr<TransportStrip> strip;
};

ProgramWindow::ProgramWindow(std::unique_ptr<TransportStrip> strip, std::unique_ptr<juce::AudioProcessorEditor> editor,
                             float scale, Events newEvents)
    : DocumentWindow("Sivray", juce::Colour(colours::kNight), minimiseButton | closeButton),
      content(std::make_unique<Content>(std::move(strip), std::move(editor), scale)),
      events(std::move(newEvents)) {
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
