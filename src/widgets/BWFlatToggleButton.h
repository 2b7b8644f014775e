// A button of a coloured rectangle and a text.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/BWButtonBase.h"
#include "widgets/BWView.h"
#include "widgets/PanelText.h"

namespace tesh::bramel {

class BWFlatToggleButton : public BWButtonBase {
 public:
  struct Colours {
    juce::Colour fill = juce::Colours::transparentBlack;
    juce::Colour outline = juce::Colours::transparentBlack;
    juce::Colour text = juce::Colours::black;
  };

  BWFlatToggleButton();

  void setOffColours(const Colours& colours);
  void setOnColours(const Colours& colours);
  void setOutlineThickness(float thickness);
  void setCornerSize(float radius) { background.setCornerSize(radius); }
  /// The text is also the button's name for a screen reader, unless it has a title.
  void setText(const juce::String& newText);
  void setFont(const juce::Font& font) { text.setFont(font); }

  void resized() override;

 protected:
  void refresh() override;

 private:
  BWView background;
  PanelText text;
  Colours offColours;
  Colours onColours;
};

}  // namespace tesh::bramel
