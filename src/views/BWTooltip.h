// Shows a parameter's name and value beside its control while it moves and for a second afterwards.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

#include "core/TaskLoop.h"
#include "views/BWPopupView.h"
#include "widgets/BWView.h"
#include "widgets/PanelText.h"

namespace tesh::bramel {

/// Not a component: it makes one when it is first shown. Message thread only.
class BWTooltip : public std::enable_shared_from_this<BWTooltip> {
 public:
  BWTooltip();
  ~BWTooltip();

  void setAnchor(juce::Component* newAnchor);
  // Changing a text lays out an open tooltip again.
  void setName(const juce::String& newName);
  void setValue(const juce::String& newValue);
  void setFill(juce::Colour colour) { fill = colour; }
  void setOutline(juce::Colour colour) { outline = colour; }
  void setTextColour(juce::Colour colour) { textColour = colour; }

  /// Shows the tooltip for another second. This object must be owned by a shared pointer.
  void show();
  bool isShowing() const { return popup != nullptr && popup->isVisible(); }

 private:
  void build();
  std::unique_ptr<PanelText> makeText(const juce::Font& font) const;
  void layOut();
  void hideAfterLastShow();

  juce::Component::SafePointer<juce::Component> anchor;
  std::shared_ptr<BWPopupView> popup;
  std::shared_ptr<BWView> content;
  std::unique_ptr<PanelText> nameText;
  std::unique_ptr<PanelText> valueText;
  juce::Font nameFont;
  juce::Font valueFont;
  juce::String name;
  juce::String value;
  juce::Colour fill;
  juce::Colour outline;
  juce::Colour textColour;
  int showCount = 0;  ///< Number of calls of `show` whose second has not ended.
  std::shared_ptr<cofu::core::impl::TaskLoop> scheduler;
};

}  // namespace tesh::bramel
