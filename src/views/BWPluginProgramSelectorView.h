// The program bar: number and name of the current program, the buttons for its neighbours, and the list.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <utility>

#include "viewmodels/IPluginEditViewModel.h"
#include "views/BWPopupView.h"
#include "views/RightClick.h"
#include "widgets/BWStackingView.h"
#include "widgets/BWToggleButton.h"
#include "widgets/PanelText.h"

namespace tesh::bramel {

class BWProgramListView;

/// The bar's appearance on a panel. Rectangles are in the bar's coordinates, which are those of the panel.
struct ProgramBarLook {
  juce::Rectangle<int> label;
  juce::Rectangle<int> nameButton;
  juce::Rectangle<int> previous;
  juce::Rectangle<int> next;
  juce::Image previousImage;
  juce::Image nextImage;
  juce::Font font;  ///< A font of the display typeface.
  juce::Colour colour = juce::Colours::black;
  UIPopupDirection popupDirection = UIPopupDirection::rightCentre;
};

/// Covers the panel and lets clicks through, except on its buttons. Message thread only.
class BWPluginProgramSelectorView : public juce::Component, public IBWControlListener {
 public:
  explicit BWPluginProgramSelectorView(const ProgramBarLook& look);
  ~BWPluginProgramSelectorView() override;

  /// Shows the model's program.
  void setViewModel(std::shared_ptr<IPluginEditViewModel> model);
  void updateText();

  /// Makes the menu that opens by a right click on the program's name; there is none by default.
  void setMenu(std::function<juce::PopupMenu()> newMenu) { menu = std::move(newMenu); }

  void openList();
  /// The pages of the open list; null if it is closed.
  std::shared_ptr<BWStackingView> listStack() const { return stack.lock(); }
  /// A function that opens the list in another program bar as it is open here; empty if it is closed.
  std::function<void(BWPluginProgramSelectorView&)> listContinuation() const;

  void controlGestureBegan(IBWControl& control) override;

 private:
  void addButton(BWToggleButton& button, juce::Rectangle<int> bounds, const char* title);
  void openMenu();
  std::shared_ptr<BWProgramListView> makeProgramList();

  std::shared_ptr<IPluginEditViewModel> viewModel;
  BWToggleButton nameButton;
  PanelText nameLabel;
  BWToggleButton nextButton;
  BWToggleButton previousButton;
  std::shared_ptr<BWPopupView> popup;
  std::weak_ptr<BWStackingView> stack;
  UIPopupDirection popupDirection;
  std::function<juce::PopupMenu()> menu;
  RightClick rightClick;
};

}  // namespace tesh::bramel
