// Builds the tabs and lists of the banks, and runs the actions above them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWProgramListView.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "views/ActionButton.h"
#include "views/BWProgramListSaveAsView.h"
#include "views/JapaneseText.h"
#include "views/MenuPlace.h"
#include "widgets/BWGradationView.h"
#include "widgets/BWStackingView.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel {
namespace {

constexpr const char* kUser = "User";
constexpr int kHeaderHeight = 44;
constexpr int kIconTop = 1;
constexpr int kIconHeight = 30;
constexpr int kBankTitleTop = 29;
constexpr int kBankTitleHeight = 14;
constexpr float kBankFontHeight = 16.0F;
constexpr int kDeleteItem = 1;

struct BankRow {
  const char* bank;
  const char* title;
  const char* japaneseTitle;
  const char* icon;  ///< The image's name, before "_white" and "_orange".
};

constexpr std::array<BankRow, 3> kBanks{{
    {"Factory", "Factory", "\u30d5\u30a1\u30af\u30c8\u30ea\u30fc", "factory"},
    {"Factory2", "Factory 2", "\u30d5\u30a1\u30af\u30c8\u30ea\u30fc2", "factory"},
    {kUser, "User", "\u30e6\u30fc\u30b6\u30fc", "folder"},
}};

/// Null for an unknown bank.
const BankRow* rowOf(const std::string& bank) {
  const auto* const found =
      std::find_if(kBanks.begin(), kBanks.end(), [&bank](const BankRow& row) { return bank == row.bank; });
  return found == kBanks.end() ? nullptr : found;
}

}  // namespace

BWProgramListView::BWProgramListView() : face(japaneseFace("Meiryo UI")), japanese(face.isNotEmpty()) {}

BWProgramListView::~BWProgramListView() {
  if (programList != nullptr) {
    programList->setListener(nullptr);
  }
}

void BWProgramListView::setFontProvider(std::shared_ptr<IBramelFontProvider> provider) {
  fontProvider = std::move(provider);
  build();
}

void BWProgramListView::setImageProvider(std::shared_ptr<IBramelImageProvider> provider) {
  imageProvider = std::move(provider);
  build();
}

void BWProgramListView::setProgramList(std::shared_ptr<IProgramListViewModel> model) {
  programList = std::move(model);
  programList->setListener(this);
  build();
}

std::vector<std::string> BWProgramListView::getBanks() const {
  if (programList->getProgramCount("Factory2") != 0) {
    return {"Factory", "Factory2", kUser};
  }
  return {"Factory", kUser};
}

juce::String BWProgramListView::getBankTitle(const std::string& bank) const {
  const BankRow* const row = rowOf(bank);
  return row == nullptr ? juce::String() : juce::String::fromUTF8(japanese ? row->japaneseTitle : row->title);
}

juce::Image BWProgramListView::getBankIcon(const std::string& bank) const {
  const BankRow* const row = rowOf(bank);
  return row == nullptr ? juce::Image() : imageNamed(*imageProvider, std::string(row->icon) + "_white");
}

juce::Image BWProgramListView::getBankIconOn(const std::string& bank) const {
  const BankRow* const row = rowOf(bank);
  return row == nullptr ? juce::Image() : imageNamed(*imageProvider, std::string(row->icon) + "_orange");
}

std::shared_ptr<juce::Component> BWProgramListView::makeHeader() const {
  return std::make_shared<BWTabGradationView>();
}

void BWProgramListView::build() {
  if (fontProvider == nullptr || imageProvider == nullptr || programList == nullptr) {
    return;
  }
  shownBank = programList->getCurrentBank();
  const juce::Font actionFont = fontNamed(*fontProvider, "Open Sans Regular", kActionFontHeight);
  importButton = makeActionButton("Import", actionFont, *this);
  exportButton = makeActionButton("Export", actionFont, *this);
  saveAsButton = makeActionButton("Save As", actionFont, *this);
  saveButton = makeActionButton("Save", actionFont, *this);
  header = makeHeader();
  addAndMakeVisible(*header);
  tabs.clear();
  std::vector<std::shared_ptr<IBWTwoStateControl>> icons;
  std::vector<std::shared_ptr<IBWTwoStateControl>> titles;
  std::uint64_t position = 0;
  for (const std::string& bank : getBanks()) {
    position = bank == shownBank ? tabs.size() : position;
    tabs.push_back(makeTab(bank));
    icons.push_back(tabs.back().icon);
    titles.push_back(tabs.back().title);
  }
  tabGroup = std::make_shared<BWVirtualToggleGroup>();
  tabGroup->setButtons(std::move(icons));
  tabGroup->setState(position);
  tabGroup->setListener(this);
  titleGroup = std::make_shared<BWVirtualToggleGroup>();
  titleGroup->setButtons(std::move(titles));
  titleGroup->setState(position);
  layOut();
  refresh();
}

BWProgramListView::Tab BWProgramListView::makeTab(const std::string& bank) {
  Tab tab{bank, std::make_shared<BWToggleButton>(), std::make_shared<BWFlatToggleButton>(),
          std::make_shared<BWSimpleListView>()};
  tab.icon->setOffImage(getBankIcon(bank));
  tab.icon->setOnImage(getBankIconOn(bank));
  tab.icon->setImagePlacement(juce::RectanglePlacement::centred);
  tab.icon->setTitle(getBankTitle(bank));
  header->addAndMakeVisible(*tab.icon);
  tab.title->setInterceptsMouseClicks(false, false);
  tab.title->setAccessible(false);
  tab.title->setOffColours({.text = juce::Colours::white});
  tab.title->setOnColours({.text = juce::Colour(colours::kAmber)});
  tab.title->setText(getBankTitle(bank));
  tab.title->setFont(japanese ? juce::Font(face, kBankFontHeight, juce::Font::plain)
                              : fontNamed(*fontProvider, "Open Sans Regular", kBankFontHeight));
  header->addAndMakeVisible(*tab.title);
  tab.list->setListener(this);
  tab.list->setTellsMarkedRow(true);
  tab.list->setListTitle(getBankTitle(bank));
  addAndMakeVisible(*tab.list);
  return tab;
}

void BWProgramListView::resized() {
  BWStackingPageView::resized();
  layOut();
}

void BWProgramListView::layOut() {
  if (tabs.empty()) {
    return;
  }
  header->setBounds(0, 0, getWidth(), kHeaderHeight);
  const int width = getWidth() / static_cast<int>(tabs.size());
  int x = 0;
  for (const Tab& tab : tabs) {
    tab.icon->setBounds(x, kIconTop, width, kIconHeight);
    tab.title->setBounds(x, kBankTitleTop, width, kBankTitleHeight);
    tab.list->setBounds(0, kHeaderHeight, getWidth(), std::max(getHeight() - kHeaderHeight, 0));
    x += width;
  }
}

void BWProgramListView::fillLists() {
  // Getting it applies a waiting selection.
  const auto currentRow = static_cast<int>(programList->getCurrentProgramIndex());
  const std::string current = programList->getCurrentBank();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    const Tab& tab = tabs[i];
    std::vector<std::string> rows;
    const std::uint64_t count = programList->getProgramCount(tab.bank);
    for (std::uint64_t j = 0; j < count; ++j) {
      std::array<char, 256> text{};
      std::snprintf(text.data(), text.size(), "%03zu : %s", static_cast<std::size_t>(j + 1),
                    programList->getProgramName(j, tab.bank).c_str());
      rows.emplace_back(text.data());
    }
    tab.list->setItems(std::move(rows));
    tab.list->setVisible(i == shownTab());
    if (i == shownTab() && tab.bank == current) {
      tab.list->selectRow(currentRow);
    }
  }
}

void BWProgramListView::updateActions() {
  const bool ownProgram = programList->getCurrentBank() == kUser;
  const bool ownTab = shownBank == kUser;
  clearRightItems();
  if (ownTab) {
    addRightItem(importButton);
    addRightItem(exportButton);
  }
  addRightItem(saveAsButton);
  if (ownProgram) {
    addRightItem(saveButton);
  }
}

void BWProgramListView::refresh() {
  fillLists();
  updateActions();
  if (whenFilled) {
    whenFilled();
  }
}

/// A call to make after a change by the user, if this view still exists by then. The model reports the change too, but
/// only with the next block, which may never come; asking for the current program delivers waiting reports.
std::function<void()> BWProgramListView::refreshLater() {
  return [view = juce::Component::SafePointer<BWProgramListView>(this)] {
    if (view != nullptr) {
      view->refresh();
    }
  };
}

// From the user.

void BWProgramListView::controlValueChanged(IBWControl& control) {
  if (&control != tabGroup.get()) {
    return;
  }
  shownBank = tabs[shownTab()].bank;
  titleGroup->setState(tabGroup->getState());
  refresh();
}

void BWProgramListView::controlGestureBegan(IBWControl& control) {
  if (&control == saveButton.get()) {
    programList->overwriteCurrentProgram();
  } else if (&control == saveAsButton.get()) {
    openSaveAs();
  } else if (&control == importButton.get()) {
    dialogs.openImport(*this, programList, refreshLater());
  } else if (&control == exportButton.get()) {
    dialogs.openExport(*this, programList);
  }
}

void BWProgramListView::showBank(const std::string& bank) {
  const auto found = std::find_if(tabs.begin(), tabs.end(), [&bank](const Tab& tab) { return tab.bank == bank; });
  if (found != tabs.end()) {
    tabGroup->setState(static_cast<std::uint64_t>(found - tabs.begin()));
    tabGroup->notifyChanged();
  }
}

void BWProgramListView::openSaveAs() {
  if (BWStackingView* const stack = getStackingView()) {
    stack->pushPage(std::make_shared<BWProgramListSaveAsView>(programList, *fontProvider, refreshLater()));
  }
}

void BWProgramListView::listRowSelected(BWSimpleListView& list, int row) {
  if (list.isVisible() && row >= 0) {
    programList->selectProgram(static_cast<std::uint64_t>(row), tabs[shownTab()].bank);
    updateActions();
  }
}

void BWProgramListView::listRowClicked(BWSimpleListView& /*list*/, int row, const juce::MouseEvent& event) {
  if (event.mods.isRightButtonDown() && shownBank == kUser) {
    openDeleteMenu(row);
  }
}

void BWProgramListView::openDeleteMenu(int row) {
  juce::PopupMenu menu;
  menu.addItem(kDeleteItem, "Delete");
  const auto model = programList;
  menu.showMenuAsync(menuPlaceIn(*this).withMousePosition(), [model, row, tell = refreshLater()](int chosen) {
    if (chosen == kDeleteItem) {
      model->deleteProgram(static_cast<std::uint64_t>(row), kUser);
      tell();
    }
  });
}

// From the model.

std::weak_ptr<IProgramListViewModelListener> BWProgramListView::getWeakSelf() {
  return std::shared_ptr<IProgramListViewModelListener>(liveness, this);
}

void BWProgramListView::onProgramSaved(IProgramListViewModel& /*model*/, const std::uint64_t* /*programIds*/,
                                       std::uint64_t /*count*/, const std::string& bankName) {
  showBank(bankName);
}

void BWProgramListView::onProgramDeleted(IProgramListViewModel& /*model*/, const std::uint64_t* /*programIds*/,
                                         std::uint64_t /*count*/, const std::string& /*bankName*/) {
  refresh();  // The deleted program may have been the current one, which Save would overwrite.
}

}  // namespace tesh::bramel
