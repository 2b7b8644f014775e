// The generic half of an instrument's panel: it binds controls to parameters, opens pop-ups and shows tooltips. An
// instrument's view derives from it and says what stands where.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "viewmodels/IPluginEditViewModel.h"
#include "viewmodels/IPluginEditViewModelListener.h"
#include "views/BWPluginProgramSelectorView.h"
#include "views/BWPluginSettingsViewListener.h"
#include "views/BWPopupView.h"
#include "views/BWTooltip.h"
#include "views/ControlTable.h"
#include "views/PanelLook.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/BWToggleButton.h"
#include "widgets/IBWSimpleListView.h"

namespace tesh::bramel {

/// Message thread only. Updates that come from the model notify nobody.
class BWPluginEditView : public juce::Component,
                         public IBWControlListener,
                         public IBWSimpleListViewListener,
                         public IPluginEditViewModelListener,
                         public BWPluginSettingsViewListener {
 public:
  static constexpr int kWidth = 768;
  static constexpr int kHeight = 468;

  BWPluginEditView();
  /// Ends the edits that a hand has begun.
  ~BWPluginEditView() override;

  /// Builds the controls. Call it once.
  virtual void setViewModel(std::shared_ptr<IPluginEditViewModel> model);
  virtual void createControls() = 0;
  virtual void updateAllControls();
  /// Shows a parameter's value; past the table nothing happens.
  virtual void updateControl(std::uint64_t index);
  /// After each change of a parameter, from either side.
  virtual void onParameterUpdated(std::uint64_t /*index*/) {}
  /// After a row was chosen in a list that belongs to a control without a parameter.
  virtual void onListRowChosen(IBWControl& /*control*/, int /*row*/) {}
  /// Null for a parameter without a control on the panel.
  virtual juce::Component* getControl(std::uint64_t index);
  virtual std::string getTooltipName(std::uint64_t index);
  virtual std::string getTooltipValue(std::uint64_t index);
  virtual void showTooltip(std::uint64_t index);
  /// The tooltip's text for the value that a control shows, also while the model has yet to hear of it.
  std::string shownValue(std::uint64_t index);
  /// The value whose text in the tooltip is `text` or the same number; nothing if there is none.
  std::optional<float> valueOfText(std::uint64_t index, const juce::String& text);

  /// Opens the settings page over the middle of the panel.
  void openSettings();
  /// The pop-up shown last; it may be closed. Null before the first.
  const std::shared_ptr<BWPopupView>& lastPopup() const { return popup; }
  BWPluginProgramSelectorView& programBar() const { return *programSelector; }

  void controlValueChanged(IBWControl& control) override;
  void controlGestureBegan(IBWControl& control) override;
  void controlGestureEnded(IBWControl& control) override;
  void listRowSelected(BWSimpleListView& list, int row) override;
  void onAllParametersChanged(IPluginEditViewModel& model) override;
  void onParameterChanged(IPluginEditViewModel& model, std::uint64_t index) override;
  void settingsViewClosed(BWPluginSettingsView& view) override;
  void paint(juce::Graphics& graphics) override;

 protected:
  IPluginEditViewModel& model() const { return *viewModel; }

  /// Binds a control to a parameter and becomes its listener.
  void registerControl(std::uint64_t index, const std::shared_ptr<IBWControl>& control);
  std::uint64_t stepCount(std::uint64_t index) const;
  juce::Font font(const char* name, double height) const;
  /// The empty image if there is none of this name.
  juce::Image image(const std::string& name) const;

  // Building blocks, each called once, in the order in which they cover one another.

  void createBackground(const juce::Image& picture);
  void createProgramSelector(const ProgramBarLook& look);
  void createSettingsZone(juce::Rectangle<int> bounds);
  void setTooltipColours(juce::Colour fill, juce::Colour outline, juce::Colour text);

  /// Opens a list of a parameter's states beside `anchor`. Nothing happens for a parameter without a control.
  void openParameterList(std::uint64_t index, const std::vector<std::string>& names, juce::Component& anchor,
                         UIPopupDirection direction);
  void showPopup(std::shared_ptr<BWPopupView> newPopup);

 private:
  void applyState(std::uint64_t index, int state);
  void applyValue(std::uint64_t index, float value);
  void tellTooltip(std::uint64_t index, float value);
  void takeMove(std::uint64_t index, float value);
  BWTooltip& tooltipOf(std::uint64_t index, juce::Component& control);

  std::shared_ptr<PanelLook> panelLook;  ///< Outlives the children, which were laid out with it.
  std::shared_ptr<IPluginEditViewModel> viewModel;
  ControlTable controls;
  std::set<std::uint64_t> openGestures;              ///< Parameters that a hand holds.
  std::vector<std::shared_ptr<BWTooltip>> tooltips;  ///< By parameter; null until first shown.
  std::unique_ptr<juce::ImageComponent> background;
  std::unique_ptr<BWPluginProgramSelectorView> programSelector;
  std::vector<std::unique_ptr<BWToggleButton>> settingsZones;
  std::shared_ptr<BWPopupView> popup;
  std::weak_ptr<BWSimpleListView> openList;  ///< The list of a parameter that is open.
  IBWControl* openListControl = nullptr;     ///< What the list belongs to; it lives in `controls`.
  juce::Colour tooltipFill;
  juce::Colour tooltipOutline;
  juce::Colour tooltipText;
};

}  // namespace tesh::bramel
