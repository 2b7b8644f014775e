// The sample browser: a tab for each pad, categories on the left, samples on the right. A click on a sample gives it to
// the pad at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "viewmodels/ISampleSelectorViewModel.h"
#include "viewmodels/SivraySampleFinder.h"
#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/BWFlatToggleButton.h"
#include "widgets/BWGradationView.h"
#include "widgets/BWLabel.h"
#include "widgets/BWSimpleListView.h"
#include "widgets/BWVirtualToggleGroup.h"

namespace tesh::bramel {

/// Builds its children once both models are set. Does not follow changes from elsewhere. Message thread only.
class BWSampleSelectorView : public juce::Component, public IBWControlListener, public IBWSimpleListViewListener {
 public:
  void setSelector(std::shared_ptr<ISampleSelectorViewModel> newSelector);
  void setFontProvider(std::shared_ptr<IBramelFontProvider> provider);
  /// Enables the menu of similar samples, by a right click on a sample or Shift+S on the selected one.
  void setFinder(std::shared_ptr<plugin::sivray::SivraySampleFinder> newFinder) { finder = std::move(newFinder); }
  /// Shows a pad ("part") and its sample. Must be called after both models are set.
  void setPart(std::uint64_t newPart);
  std::uint64_t shownPart() const { return part; }
  /// Shows a category, -1 for none. Selects the part's sample if it is in that category.
  void showCategory(std::int64_t newCategory);
  std::int64_t shownCategory() const { return category; }

  void controlValueChanged(IBWControl& control) override;
  void listRowSelected(BWSimpleListView& list, int row) override;
  void listRowClicked(BWSimpleListView& list, int row, const juce::MouseEvent& event) override;
  bool listKeyPressed(BWSimpleListView& list, int row, const juce::KeyPress& key) override;
  void resized() override;

 private:
  void build();
  void buildTabs();
  std::shared_ptr<BWLabel> addLabel(const char* text);
  std::shared_ptr<BWSimpleListView> addList(const char* title);
  void openSimilar(int row, const juce::PopupMenu::Options& place);
  void layOut();

  std::shared_ptr<ISampleSelectorViewModel> selector;
  std::shared_ptr<plugin::sivray::SivraySampleFinder> finder;  ///< May be null.
  std::shared_ptr<IBramelFontProvider> fontProvider;
  std::shared_ptr<BWTabGradationView> header;
  std::shared_ptr<BWVirtualToggleGroup> tabs;
  std::vector<std::shared_ptr<BWFlatToggleButton>> tabButtons;
  std::shared_ptr<BWLabel> categoriesLabel;
  std::shared_ptr<BWLabel> samplesLabel;
  std::shared_ptr<BWSimpleListView> categoryList;
  std::shared_ptr<BWSimpleListView> sampleList;
  std::uint64_t part = 0;
  std::int64_t category = 0;
};

}  // namespace tesh::bramel
