// The list of programs: a tab and a list per bank, and the actions above them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "viewmodels/IProgramListViewModel.h"
#include "viewmodels/IProgramListViewModelListener.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "viewmodels/resources/IBramelImageProvider.h"
#include "views/ProgramFileDialogs.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/BWStackingPageView.h"
#include "widgets/BWToggleButton.h"
#include "widgets/BWVirtualToggleGroup.h"

namespace tesh::bramel {

/// Builds its children once fonts, images and model are set. Message thread only. Other instruments may override the
/// virtual operations.
class BWProgramListView : public BWStackingPageView,
                          public IBWControlListener,
                          public IBWSimpleListViewListener,
                          public IProgramListViewModelListener {
 public:
  BWProgramListView();
  ~BWProgramListView() override;

  virtual void setFontProvider(std::shared_ptr<IBramelFontProvider> provider);
  void setImageProvider(std::shared_ptr<IBramelImageProvider> provider);
  /// Becomes the model's listener.
  void setProgramList(std::shared_ptr<IProgramListViewModel> model);
  /// Calls `shown` whenever the lists have been filled: another program, or another number of it, may be current then.
  void setWhenFilled(std::function<void()> shown) { whenFilled = std::move(shown); }

  /// Names of the banks with a tab, in order.
  virtual std::vector<std::string> getBanks() const;
  /// In the user's language; empty for an unknown bank.
  virtual juce::String getBankTitle(const std::string& bank) const;
  virtual juce::Image getBankIcon(const std::string& bank) const;
  virtual juce::Image getBankIconOn(const std::string& bank) const;
  virtual std::shared_ptr<juce::Component> makeHeader() const;

  /// Shows the tab of a bank; ignores a bank without one.
  void showBank(const std::string& bank);
  const std::string& getShownBank() const { return shownBank; }
  /// Shows the page for entering a name.
  void openSaveAs();
  /// Opens a menu that confirms the deletion of row `row` of the user's programs.
  void openDeleteMenu(int row);

  void controlValueChanged(IBWControl& control) override;
  void controlGestureBegan(IBWControl& control) override;
  void listRowSelected(BWSimpleListView& list, int row) override;
  void listRowClicked(BWSimpleListView& list, int row, const juce::MouseEvent& event) override;
  std::weak_ptr<IProgramListViewModelListener> getWeakSelf() override;
  void onProgramSaved(IProgramListViewModel& model, const std::uint64_t* programIds, std::uint64_t count,
                      const std::string& bankName) override;
  void onProgramDeleted(IProgramListViewModel& model, const std::uint64_t* programIds, std::uint64_t count,
                        const std::string& bankName) override;
  void resized() override;

 private:
  struct Tab {
    std::string bank;
    std::shared_ptr<BWToggleButton> icon;
    std::shared_ptr<BWFlatToggleButton> title;
    std::shared_ptr<BWSimpleListView> list;
  };

  void build();
  Tab makeTab(const std::string& bank);
  void fillLists();
  void updateActions();
  void refresh();
  std::function<void()> refreshLater();
  void layOut();
  std::size_t shownTab() const { return static_cast<std::size_t>(tabGroup->getState()); }

  std::shared_ptr<char> liveness = std::make_shared<char>();
  std::shared_ptr<IBramelFontProvider> fontProvider;
  std::shared_ptr<IBramelImageProvider> imageProvider;
  std::shared_ptr<IProgramListViewModel> programList;
  std::shared_ptr<juce::Component> header;
  std::vector<Tab> tabs;
  std::shared_ptr<BWVirtualToggleGroup> tabGroup;
  std::shared_ptr<BWVirtualToggleGroup> titleGroup;
  std::shared_ptr<BWFlatToggleButton> importButton;
  std::shared_ptr<BWFlatToggleButton> exportButton;
  std::shared_ptr<BWFlatToggleButton> saveButton;
  std::shared_ptr<BWFlatToggleButton> saveAsButton;
  ProgramFileDialogs dialogs;
  std::function<void()> whenFilled;
  std::string shownBank;
  const juce::String face;  ///< Typeface of Japanese texts; empty if texts are English.
  const bool japanese;
};

}  // namespace tesh::bramel
