// A cell of the settings page's guide: a picture with its caption.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "views/BWPluginSettingsView.h"
#include "widgets/BWCollectionViewCell.h"
#include "widgets/BWView.h"
#include "widgets/PanelText.h"

namespace tesh::bramel {

class BWPluginSettingsView::BramelCellView : public BWCollectionViewCell {
 public:
  explicit BramelCellView(const juce::Font& captionFont);

  void setPicture(const juce::Image& image);
  void setCaption(const juce::String& text);
  void setSelected(bool isSelected) override;
  void resized() override;

 private:
  BWView background;
  juce::ImageComponent picture;
  PanelText caption;
};

}  // namespace tesh::bramel
