// Lays out a cell and shows whether it is selected.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/SettingsCell.h"

#include "views/PanelRect.h"
#include "widgets/PanelColours.h"

namespace tesh::bramel {
namespace {

constexpr float kCornerSize = 4.0F;
constexpr PanelRect kPicture{0, 0, 100, 75};
constexpr PanelRect kCaption{0, 75, 100, 25};

}  // namespace

BWPluginSettingsView::BramelCellView::BramelCellView(const juce::Font& captionFont) {
  background.setCornerSize(kCornerSize);
  background.setInterceptsMouseClicks(false, false);
  picture.setInterceptsMouseClicks(false, false);
  picture.setBounds(kPicture);
  caption.setFont(captionFont);
  caption.setColour(juce::Colour(colours::kSlate));
  caption.setBounds(kCaption);
  addAndMakeVisible(background);
  addAndMakeVisible(picture);
  addAndMakeVisible(caption);
}

void BWPluginSettingsView::BramelCellView::setPicture(const juce::Image& image) {
  picture.setImage(image, juce::RectanglePlacement::centred);
}

void BWPluginSettingsView::BramelCellView::setCaption(const juce::String& text) {
  caption.setText(text);
  setTitle(text);
}

void BWPluginSettingsView::BramelCellView::setSelected(bool isSelected) {
  BWCollectionViewCell::setSelected(isSelected);
  background.setFill(isSelected ? juce::Colour(colours::kActionFill) : juce::Colours::transparentBlack);
}

void BWPluginSettingsView::BramelCellView::resized() { background.setBounds(getLocalBounds()); }

}  // namespace tesh::bramel
