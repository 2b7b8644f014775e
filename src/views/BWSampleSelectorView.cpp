// Builds the browser's tabs and lists, and handles their selections.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWSampleSelectorView.h"

#include <algorithm>
#include <string>
#include <utility>

#include "views/FinderMenus.h"
#include "views/MenuPlace.h"
#include "widgets/PanelColours.h"
#include "widgets/ProvidedResources.h"

namespace tesh::bramel {
namespace {

constexpr int kTabHeight = 48;
constexpr int kLabelHeight = 28;
constexpr int kLabelInset = 6;
constexpr int kCategoryWidth = 153;
constexpr double kTabFontHeight = 16.0;
constexpr double kLabelFontHeight = 15.0;

}  // namespace

void BWSampleSelectorView::setSelector(std::shared_ptr<ISampleSelectorViewModel> newSelector) {
  selector = std::move(newSelector);
  build();
}

void BWSampleSelectorView::setFontProvider(std::shared_ptr<IBramelFontProvider> provider) {
  fontProvider = std::move(provider);
  build();
}

void BWSampleSelectorView::build() {
  if (selector == nullptr || fontProvider == nullptr) {
    return;
  }
  removeAllChildren();
  header = std::make_shared<BWTabGradationView>();
  addAndMakeVisible(*header);
  buildTabs();
  categoriesLabel = addLabel("Categories");
  samplesLabel = addLabel("Samples");
  categoryList = addList("Categories");
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < selector->getCategoryCount(); ++i) {
    names.push_back(selector->getCategoryName(i));
  }
  categoryList->setItems(std::move(names));
  sampleList = addList("Samples");
  showCategory(selector->getCategoryIndex(part));
  layOut();
}

void BWSampleSelectorView::buildTabs() {
  const BWFlatToggleButton::Colours off{.text = juce::Colours::white};
  const BWFlatToggleButton::Colours on{.text = juce::Colour(colours::kAmber)};
  tabs = std::make_shared<BWVirtualToggleGroup>();
  tabs->setListener(this);
  tabButtons.clear();
  for (int i = 0; i < selector->getPartCount(); ++i) {
    const auto tab = std::make_shared<BWFlatToggleButton>();
    tab->setFont(fontNamed(*fontProvider, "Open Sans Regular", kTabFontHeight));
    tab->setOffColours(off);
    tab->setOnColours(on);
    tab->setText(juce::String(i + 1).paddedLeft('0', 2));
    addAndMakeVisible(*tab);
    tabButtons.push_back(tab);
  }
  tabs->setButtons({tabButtons.begin(), tabButtons.end()});
  tabs->setState(part);
}

std::shared_ptr<BWLabel> BWSampleSelectorView::addLabel(const char* text) {
  auto label = std::make_shared<BWLabel>();
  label->setFont(fontNamed(*fontProvider, "Open Sans SemiBold", kLabelFontHeight));
  label->setColour(juce::Colour(colours::kListLabel));
  label->setText(text);
  addAndMakeVisible(*label);
  return label;
}

std::shared_ptr<BWSimpleListView> BWSampleSelectorView::addList(const char* title) {
  auto list = std::make_shared<BWSimpleListView>();
  list->setListTitle(title);
  list->setTellsMarkedRow(true);
  list->setFontProvider(*fontProvider);
  list->setListener(this);
  addAndMakeVisible(*list);
  return list;
}

void BWSampleSelectorView::showCategory(std::int64_t newCategory) {
  category = newCategory;
  categoryList->selectRow(static_cast<int>(category));
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < selector->getSampleCount(category); ++i) {
    names.push_back(selector->getSampleName(category, i));
  }
  sampleList->setItems(std::move(names));
  sampleList->scrollToTop();
  if (selector->getCategoryIndex(part) == category) {
    sampleList->selectRow(static_cast<int>(selector->getSampleIndex(part)));
  }
}

void BWSampleSelectorView::setPart(std::uint64_t newPart) {
  part = newPart;
  if (tabs != nullptr) {
    tabs->setState(part);
    tabs->notifyChanged();
  }
}

void BWSampleSelectorView::controlValueChanged(IBWControl& /*control*/) {
  part = tabs->getState();
  showCategory(selector->getCategoryIndex(part));
}

void BWSampleSelectorView::listRowSelected(BWSimpleListView& list, int row) {
  if (row < 0) {
    return;
  }
  if (&list == categoryList.get()) {
    showCategory(row);
  } else if (&list == sampleList.get()) {
    selector->selectSample(part, category, row);
  }
}

void BWSampleSelectorView::listRowClicked(BWSimpleListView& list, int row, const juce::MouseEvent& event) {
  if (&list == sampleList.get() && row >= 0 && event.mods.isRightButtonDown()) {
    openSimilar(row, menuPlaceIn(*this).withMousePosition());
  }
}

bool BWSampleSelectorView::listKeyPressed(BWSimpleListView& list, int row, const juce::KeyPress& key) {
  const bool isOurs = &list == sampleList.get() && finder != nullptr && key.getModifiers().isShiftDown() &&
                      juce::CharacterFunctions::toLowerCase(key.getTextCharacter()) == 's';
  if (isOurs && row >= 0) {
    openSimilar(row, menuPlaceBeside(list, list.rowBounds(row)));
  }
  return isOurs;
}

void BWSampleSelectorView::openSimilar(int row, const juce::PopupMenu::Options& place) {
  if (finder == nullptr) {
    return;
  }
  const auto follow = [view = SafePointer<BWSampleSelectorView>(this)] {
    if (view != nullptr) {
      view->showCategory(view->selector->getCategoryIndex(view->part));
    }
  };
  similarMenu({selector, finder}, part, category, row, follow).showMenuAsync(place);
}

void BWSampleSelectorView::resized() { layOut(); }

void BWSampleSelectorView::layOut() {
  if (selector == nullptr || fontProvider == nullptr) {
    return;
  }
  const int width = getWidth();
  header->setBounds(0, 0, width, kTabHeight);
  const int count = static_cast<int>(tabButtons.size());
  for (int i = 0; i < count; ++i) {
    const int from = i * width / count;
    const int to = (i + 1) * width / count;
    tabButtons[static_cast<std::size_t>(i)]->setBounds(from, 0, to - from, kTabHeight);
  }
  // With one category the left list would have nothing to choose.
  const bool hasCategories = selector->getCategoryCount() >= 2;
  const int left = hasCategories ? kCategoryWidth : 0;
  const int listTop = kTabHeight + kLabelHeight;
  const int listHeight = std::max(getHeight() - listTop, 0);
  categoriesLabel->setVisible(hasCategories);
  categoryList->setVisible(hasCategories);
  categoriesLabel->setBounds(kLabelInset, kTabHeight, left, kLabelHeight);
  samplesLabel->setBounds(left + kLabelInset, kTabHeight, width - left, kLabelHeight);
  categoryList->setBounds(0, listTop, left, listHeight);
  sampleList->setBounds(left, listTop, width - left, listHeight);
}

}  // namespace tesh::bramel
