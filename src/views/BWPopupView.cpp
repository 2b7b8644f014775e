// Attaches a pop-up to its slot, draws box, shadow and dimmed panel, and closes it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWPopupView.h"

#include <algorithm>

#include "views/BWPopupSlotView.h"
#include "views/PopupPlacement.h"
#include "views/RoundedClip.h"

namespace tesh::bramel {
namespace {

constexpr float kPanelAlpha = 0.9F;
constexpr float kDimmerAlpha = 0.3F;

/// The shadow of the whole pop-up: soft, and a little to the right and down.
const juce::DropShadow kShadow{juce::Colours::black.withAlpha(0.5F), 3, {2, 4}};

}  // namespace

BWPopupView::BWPopupView() : dimmer(std::make_shared<BWFlatToggleButton>()), panel(std::make_shared<BWView>()) {
  dimmer->setListener(this);
  dimmer->setMouseCursor(juce::MouseCursor::NormalCursor);
  dimmer->setOutlineThickness(0.0F);
  addAndMakeVisible(*dimmer);
  panel->setFill(juce::Colours::white.withAlpha(kPanelAlpha));
  panel->setCornerSize(kCornerSize);
  panel->setCachedComponentImage(new RoundedClip(*panel, kCornerSize));
  dimmer->addAndMakeVisible(*panel);
  setModal(true);
}

BWPopupView::~BWPopupView() {
  listenToKeysOf(nullptr);
  if (auto* const parent = getParentComponent()) {
    parent->removeChildComponent(this);
  }
}

void BWPopupView::setContentSize(int width, int height) {
  contentSize = {width, height};
  placePanel();
}

void BWPopupView::setContent(std::shared_ptr<juce::Component> newContent) {
  content = std::move(newContent);
  if (content != nullptr) {
    panel->addAndMakeVisible(*content);
  }
}

void BWPopupView::setAnchor(juce::Component* newAnchor) { anchor = newAnchor; }

void BWPopupView::setModal(bool isModal) {
  modal = isModal;
  const juce::Colour fill = isModal ? juce::Colours::black.withAlpha(kDimmerAlpha) : juce::Colours::transparentBlack;
  dimmer->setInterceptsMouseClicks(isModal, true);
  dimmer->setOffColours({.fill = fill});
  dimmer->setOnColours({.fill = fill});
  placePanel();
  refreshShadow();
}

void BWPopupView::setPanelColour(juce::Colour colour) {
  panel->setFill(colour);
  refreshShadow();
}

void BWPopupView::show() {
  BWPopupSlotView* const slot = BWPopupSlotView::above(anchor.getComponent());
  if (slot == nullptr) {
    return;
  }
  closed = false;
  slot->addAndMakeVisible(this);
  placePanel();
  if (modal) {
    addChildComponent(shield);
    shield.setBounds(getLocalBounds());
    shield.raise();
    listenToKeysOf(getTopLevelComponent());
  }
}

void BWPopupView::listenToKeysOf(juce::Component* window) {
  if (keyWindow != nullptr) {
    keyWindow->removeKeyListener(this);
  }
  keyWindow = window;
  if (window != nullptr) {
    window->addKeyListener(this);
  }
}

/// Called by the window, last of all listeners, and also while nothing has the focus.
bool BWPopupView::keyPressed(const juce::KeyPress& key, juce::Component* /*origin*/) {
  if (!key.isKeyCode(juce::KeyPress::escapeKey) || juce::Component::getCurrentlyModalComponent() != nullptr) {
    return false;
  }
  close();
  return true;
}

void BWPopupView::close() {
  listenToKeysOf(nullptr);
  if (auto* const parent = getParentComponent()) {
    parent->removeChildComponent(this);
  }
  content.reset();
  closed = true;
}

void BWPopupView::controlGestureBegan(IBWControl& /*control*/) { close(); }

void BWPopupView::placePanel() {
  const juce::Component* const slot = getParentComponent();
  if (slot == nullptr || anchor == nullptr) {
    return;
  }
  const juce::Rectangle<int> from = slot->getLocalArea(anchor, anchor->getLocalBounds());
  const juce::Rectangle<int> box = placePopup(from, {slot->getWidth(), slot->getHeight()}, contentSize, directions);
  setBounds(modal ? slot->getLocalBounds() : box);
  panel->setBounds(box - getPosition());
  if (content != nullptr) {
    content->setBounds(panel->getLocalBounds());
  }
  refreshShadow();
}

/// Drawn once into an image: JUCE's shadow effect would blur the whole window again whenever a row of a list is
/// painted. The dimmed area counts as endless, so that its shadow is even up to the panel's edges.
void BWPopupView::refreshShadow() {
  if (!modal || getWidth() == 0 || getHeight() == 0) {
    shadow = {};
    return;
  }
  if (shadow.getBounds() == getLocalBounds() && shadowed == panel->getBounds()) {
    return;
  }
  shadowed = panel->getBounds();
  const int margin = 2 * (kShadow.radius + std::max(kShadow.offset.x, kShadow.offset.y));
  juce::Image outline(juce::Image::ARGB, getWidth() + 2 * margin, getHeight() + 2 * margin, true);
  {
    juce::Graphics graphics(outline);
    graphics.fillAll(juce::Colours::black.withAlpha(kDimmerAlpha));
    graphics.setColour(juce::Colours::white.withAlpha(kPanelAlpha));
    graphics.fillRoundedRectangle(panel->getBounds().translated(margin, margin).toFloat(), kCornerSize);
  }
  shadow = juce::Image(juce::Image::ARGB, getWidth(), getHeight(), true);
  juce::Graphics graphics(shadow);
  graphics.setOrigin(-margin, -margin);
  kShadow.drawForImage(graphics, outline);
  repaint();
}

void BWPopupView::paint(juce::Graphics& graphics) {
  if (shadow.isValid()) {
    graphics.drawImage(shadow, getLocalBounds().toFloat());
  }
}

void BWPopupView::resized() {
  dimmer->setBounds(getLocalBounds());
  shield.setBounds(getLocalBounds());
  placePanel();
}

std::unique_ptr<juce::AccessibilityHandler> BWPopupView::createAccessibilityHandler() {
  const auto role = modal ? juce::AccessibilityRole::dialogWindow : juce::AccessibilityRole::tooltip;
  return std::make_unique<juce::AccessibilityHandler>(*this, role);
}

}  // namespace tesh::bramel
