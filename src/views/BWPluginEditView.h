// The base of an instrument's panel: it binds controls to parameters, opens pop-ups and shows tooltips. An instrument's
// view derives from it and places the controls.
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

/// Message thread only. Updates from the model do not notify it.
class BWPluginEditView : public juce::Component,
                         public IBWControlListener,
                         public IBWSimpleListViewListener,
                         public IPluginEditViewModelListener,
                         public BWPluginSettingsViewListener {
 public:
  static constexpr int kWidth = 768;
  static constexpr int kHeight = 468;

  BWPluginEditView();
  /// Ends the edits that the user has begun.
  ~BWPluginEditView() override;

  /// Builds the controls. Must be called once.
  virtual void setViewModel(std::shared_ptr<IPluginEditViewModel> model);
  virtual void createControls() = 0;
  virtual void updateAllControls();
  /// Shows a parameter's value. Ignores an index past the table.
  virtual void updateControl(std::uint64_t index);
  /// Called after each change of a parameter, by the user or by the model.
  virtual void onParameterUpdated(std::uint64_t /*index*/) {}
  /// Called after a row was chosen in the list of a control without a parameter.
  virtual void onListRowChosen(IBWControl& /*control*/, int /*row*/) {}
  /// Null for a parameter without a control on the panel.
  virtual juce::Component* getControl(std::uint64_t index);
  virtual std::string getTooltipName(std::uint64_t index);
  virtual std::string getTooltipValue(std::uint64_t index);
  virtual void showTooltip(std::uint64_t index);
  /// The tooltip's text for the value that a control shows, even if the model does not have that value yet.
  std::string shownValue(std::uint64_t index);
  /// The value whose tooltip text is `text` or has the same number; nothing if there is none.
  std::optional<float> valueOfText(std::uint64_t index, const juce::String& text);

  /// Opens the settings page in the middle of the panel.
  void openSettings();
  /// The last pop-up that was shown, which may be closed; null if there was none.
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
  /// An empty image for an unknown name.
  juce::Image image(const std::string& name) const;

  // Building steps, each called once, in the order in which their components cover each other.

  void createBackground(const juce::Image& picture);
  void createProgramSelector(const ProgramBarLook& look);
  void createSettingsZone(juce::Rectangle<int> bounds);
  void setTooltipColours(juce::Colour fill, juce::Colour outline, juce::Colour text);

  /// Opens a list of a parameter's states beside `anchor`. Does nothing for a parameter without a control.
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
  std::set<std::uint64_t> openGestures;              ///< Parameters that the user holds.
  std::vector<std::shared_ptr<BWTooltip>> tooltips;  ///< By parameter; null until first shown.
  std::unique_ptr<juce::ImageComponent> background;
  std::unique_ptr<BWPluginProgramSelectorView> programSelector;
  std::vector<std::unique_ptr<BWToggleButton>> settingsZones;
  std::shared_ptr<BWPopupView> popup;
  std::weak_ptr<BWSimpleListView> openList;  ///< The open list of a parameter.
  IBWControl* openListControl = nullptr;     ///< The control of that list, owned by `controls`.
  juce::Colour tooltipFill;
  juce::Colour tooltipOutline;
  juce::Colour tooltipText;
};

}  // namespace tesh::bramel
