// A pop-up: a box beside the control that opened it, over a darkened panel. A click outside the box closes it.
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

/// A modal pop-up covers the whole editor. Another one covers only its box, so that showing and hiding it repaints no
/// more than that. Message thread only.
class BWPopupView : public juce::Component, public IBWControlListener, public juce::KeyListener {
 public:
  static constexpr float kCornerSize = 6.0F;

  BWPopupView();
  ~BWPopupView() override;

  /// The size of the content in panel pixels. An open pop-up is moved accordingly.
  void setContentSize(int width, int height);
  void setContent(std::shared_ptr<juce::Component> newContent);
  /// The control that the pop-up is placed beside. Not owned: it must exist until the pop-up has been shown.
  void setAnchor(juce::Component* newAnchor);
  void setDirection(UIPopupDirection direction) { setDirections({direction}); }
  /// The directions to try, in order.
  void setDirections(std::vector<UIPopupDirection> newDirections) { directions = std::move(newDirections); }
  /// A modal pop-up darkens the panel and takes every click; another one does not.
  void setModal(bool isModal);
  void setPanelColour(juce::Colour colour);

  /// Opens over the nearest BWPopupSlotView above the anchor. Does nothing without an anchor or a slot. If it is modal,
  /// the second press of a double click does not reach it, and Escape closes it if the window gets keys.
  void show();
  /// Removes the pop-up from the editor and destroys its content.
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
  /// The component whose keys this listens to; null while closed.
  juce::Component::SafePointer<juce::Component> keyWindow;
  juce::Image shadow;             ///< Alpha only, at 100 %; null while there is no shadow.
  juce::Rectangle<int> shadowed;  ///< The panel's rectangle for which `shadow` was drawn.
  juce::Component::SafePointer<juce::Component> anchor;
  juce::Point<int> contentSize;
  std::vector<UIPopupDirection> directions{UIPopupDirection::rightCentre};
  bool modal = true;
  bool closed = true;
};

}  // namespace tesh::bramel
