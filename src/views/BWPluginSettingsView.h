// The settings page: a small guide with pictures, the version, and the links to the manual and the acknowledgements.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

#include "viewmodels/IPluginSettingsViewModel.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "viewmodels/resources/IBramelImageProvider.h"
#include "views/BWPluginSettingsViewListener.h"
#include "views/InstalledPages.h"
#include "widgets/BWCollectionView.h"
#include "widgets/BWFlatToggleButton.h"

namespace tesh::bramel {

/// 736 by 436. Builds its children once fonts, images and model are set. Message thread only.
class BWPluginSettingsView : public juce::Component, public IBWControlListener, public IBWCollectionViewDataSource {
 public:
  class BramelCellView;

  BWPluginSettingsView();
  ~BWPluginSettingsView() override;

  void setSettingsViewModel(std::shared_ptr<IPluginSettingsViewModel> model);
  void setFontProvider(std::shared_ptr<IBramelFontProvider> provider);
  void setImageProvider(std::shared_ptr<IBramelImageProvider> provider);
  void setListener(BWPluginSettingsViewListener* newListener) { listener = newListener; }

  void controlGestureBegan(IBWControl& control) override;
  int getCellCount(BWCollectionView& view) override;
  juce::Point<int> getCellSize(BWCollectionView& view) override;
  std::shared_ptr<BWCollectionViewCell> makeCell(BWCollectionView& view) override;
  void fillCell(BWCollectionView& view, BWCollectionViewCell& cell, int index) override;
  void cellSelected(BWCollectionView& view) override;

 private:
  void build();
  std::unique_ptr<juce::Label> addLabel(juce::Rectangle<int> bounds, const juce::Font& labelFont,
                                        juce::Justification justification);
  std::shared_ptr<BWFlatToggleButton> addButton(juce::Rectangle<int> bounds, const char* text);
  void showRow(int row);
  void openPage(InstalledPage page);
  juce::Font bodyFont(double height) const;

  BWPluginSettingsViewListener* listener = nullptr;  ///< The frame, which owns the pop-up that owns this page.
  std::shared_ptr<IPluginSettingsViewModel> settingsViewModel;
  std::shared_ptr<IBramelFontProvider> fontProvider;
  std::shared_ptr<IBramelImageProvider> imageProvider;
  std::unique_ptr<BWCollectionView> collection;
  std::unique_ptr<juce::Label> titleLabel;
  std::unique_ptr<juce::Label> tagLabel;
  std::unique_ptr<juce::Label> descriptionLabel;
  std::vector<std::unique_ptr<juce::Label>> labels;  ///< Labels whose text never changes.
  std::shared_ptr<BWFlatToggleButton> productButton;
  std::shared_ptr<BWFlatToggleButton> acknowledgementsButton;
  std::shared_ptr<BWFlatToggleButton> closeButton;
  const juce::String face;  ///< Typeface of Japanese texts; empty if texts are English.
  const bool japanese;
};

}  // namespace tesh::bramel
