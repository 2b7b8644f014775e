// The panel of the drum module: eight columns of controls on three pages, pads, the program bar and the master effect.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "viewmodels/ISivrayEditViewModel.h"
#include "views/BWPluginEditView.h"
#include "views/BWVirtualDrumPadGroup.h"
#include "views/IContinuedView.h"
#include "views/PanelBuilder.h"
#include "views/PanelTable.h"
#include "views/RightClick.h"
#include "widgets/BWToggleButton.h"
#include "widgets/BWVirtualToggleGroup.h"
#include "widgets/PanelText.h"

namespace tesh::bramel::plugin::sivray {

/// Opens on its first page, unless it continues another view. Message thread only.
class SivrayEditView : public BWPluginEditView, public IContinuedView {
 public:
  SivrayEditView();
  ~SivrayEditView() override;

  void setViewModel(std::shared_ptr<IPluginEditViewModel> newModel) override;
  void createControls() override;
  void onParameterUpdated(std::uint64_t index) override;

  void controlValueChanged(IBWControl& control) override;
  void controlGestureBegan(IBWControl& control) override;

  // Opens pages and pop-ups as a user would, for drawing the panel without a user.

  /// Pages from 0; ignores other numbers.
  void selectPage(std::uint64_t page);
  void openSampleSelector(std::uint64_t part);
  /// The menu of samples similar to the pad's.
  void openSimilar(std::uint64_t part);
  void openEffectList();

  Continuation continuation() const override;

 private:
  void createPages();
  void createPageButtons();
  void createPads();
  void createProgramBar();
  void createDisplays();
  void createPadControls();
  void createMasterSection();
  ImageSet imagesOf(const char* off, const char* on) const;
  std::shared_ptr<BWToggleButton> addButton(juce::Component& parent, juce::Rectangle<int> bounds, ImageSet images);
  std::unique_ptr<PanelText> addText(juce::Rectangle<int> bounds, std::uint32_t colour);
  void addControl(juce::Component& parent, std::size_t macro, panel::ControlKind kind, juce::Rectangle<int> bounds);
  std::function<void(SivrayEditView&)> popupContinuation() const;
  void updatePageVisibility();
  void updateEffect();

  std::shared_ptr<ISivrayEditViewModel> editViewModel;
  std::unique_ptr<PanelBuilder> builder;
  std::vector<std::unique_ptr<juce::ImageComponent>> pages;
  std::shared_ptr<BWVirtualToggleGroup> pageSelector;
  std::vector<std::shared_ptr<BWToggleButton>> pageButtons;
  std::unique_ptr<juce::Component> padContainer;
  BWVirtualDrumPadGroup padGroup;
  std::vector<std::shared_ptr<BWToggleButton>> sampleDisplays;
  std::vector<std::unique_ptr<RightClick>> rightClicks;
  std::vector<std::unique_ptr<PanelText>> padNumbers;
  std::vector<std::unique_ptr<PanelText>> sampleNames;
  std::shared_ptr<BWToggleButton> effectButton;
  std::unique_ptr<PanelText> firstEditLabel;
  std::unique_ptr<PanelText> secondEditLabel;
  std::uint64_t selectedPage = 0;
};

}  // namespace tesh::bramel::plugin::sivray
