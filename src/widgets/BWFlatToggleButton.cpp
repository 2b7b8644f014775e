// A button of a coloured rectangle and a text.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWFlatToggleButton.h"

namespace tesh::bramel {

BWFlatToggleButton::BWFlatToggleButton() {
  background.setInterceptsMouseClicks(false, false);
  background.setOutlineThickness(1.0F);
  text.setAccessible(false);
  addAndMakeVisible(background);
  addAndMakeVisible(text);
  refresh();
}

void BWFlatToggleButton::setOffColours(const Colours& colours) {
  offColours = colours;
  refresh();
}

void BWFlatToggleButton::setOnColours(const Colours& colours) {
  onColours = colours;
  refresh();
}

void BWFlatToggleButton::setOutlineThickness(float thickness) { background.setOutlineThickness(thickness); }

void BWFlatToggleButton::setText(const juce::String& newText) {
  if (getTitle() == text.getText()) {
    setTitle(newText);
  }
  text.setText(newText);
}

void BWFlatToggleButton::resized() {
  background.setBounds(getLocalBounds());
  text.setBounds(getLocalBounds());
}

void BWFlatToggleButton::refresh() {
  const Colours& colours = getState() ? onColours : offColours;
  background.setFill(colours.fill);
  background.setOutline(colours.outline);
  text.setColour(colours.text);
}

}  // namespace tesh::bramel
