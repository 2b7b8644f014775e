// A pop-up: a box beside the control that opened it, over a darkened panel that a click outside the box closes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

#include "views/UIPopupDirection.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWView.h"
#include "widgets/DoubleClickShield.h"

namespace tesh::bramel {

/// Covers the whole editor while it is open; a pop-up that is not modal covers its box alone, so that to show and hide
/// it repaints no more. Message thread only.
class BWPopupView : public juce::Component, public IBWControlListener, public juce::KeyListener {
 public:
  static constexpr float kCornerSize = 6.0F;

  BWPopupView();
  ~BWPopupView() override;

  /// The size of the content, in pixels of the panel. An open pop-up is placed anew.
  void setContentSize(int width, int height);
  void setContent(std::shared_ptr<juce::Component> newContent);
  /// The control that the pop-up points at. Not owned: it must live until the pop-up has been shown.
  void setAnchor(juce::Component* newAnchor);
  void setDirection(UIPopupDirection direction) { setDirections({direction}); }
  /// Tried in this order.
  void setDirections(std::vector<UIPopupDirection> newDirections) { directions = std::move(newDirections); }
  /// A modal pop-up darkens the panel and takes every click; another one does neither.
  void setModal(bool isModal);
  void setPanelColour(juce::Colour colour);

  /// Opens over the nearest BWPopupSlotView above the anchor. Without an anchor or a slot nothing happens. If it is
  /// modal, the second press of a double click does not reach it, and Escape closes it where the window gets keys.
  void show();
  /// Takes the pop-up off the editor and lets its content go.
  void close();
  bool isClosed() const { return closed; }
  /// Null once the pop-up is closed.
  juce::Component* getContent() const { return content.get(); }

  void controlGestureBegan(IBWControl& control) override;
  using juce::Component::keyPressed;
  bool keyPressed(const juce::KeyPress& key, juce::Component* origin) override;
  void paint(juce::Graphics& graphics) override;
  void resized() override;
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 private:
  void listenToKeysOf(juce::Component* window);
  void placePanel();
  void refreshShadow();

  std::shared_ptr<BWFlatToggleButton> dimmer;
  std::shared_ptr<BWView> panel;
  std::shared_ptr<juce::Component> content;
  DoubleClickShield shield;
  juce::Component::SafePointer<juce::Component> keyWindow;  ///< Whose keys this hears; null while it is closed.
  juce::Image shadow;             ///< Alpha alone, at 100 %; null while the pop-up casts none.
  juce::Rectangle<int> shadowed;  ///< The panel that `shadow` was drawn for.
  juce::Component::SafePointer<juce::Component> anchor;
  juce::Point<int> contentSize;
  std::vector<UIPopupDirection> directions{UIPopupDirection::rightCentre};
  bool modal = true;
  bool closed = true;
};

}  // namespace tesh::bramel
