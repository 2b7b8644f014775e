// A scrolling grid of cells of one size, one of which can be selected.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <vector>

#include "widgets/BWCollectionViewCell.h"

namespace tesh::bramel {

class BWCollectionView;

class IBWCollectionViewDataSource {
 public:
  virtual ~IBWCollectionViewDataSource() = default;
  virtual int getCellCount(BWCollectionView& view) = 0;
  /// Width and height in pixels, both above 0.
  virtual juce::Point<int> getCellSize(BWCollectionView& view) = 0;
  virtual std::shared_ptr<BWCollectionViewCell> makeCell(BWCollectionView& view) = 0;
  virtual void fillCell(BWCollectionView& view, BWCollectionViewCell& cell, int index) = 0;
  /// The user selected a cell by mouse or keys. May delete the view.
  virtual void cellSelected(BWCollectionView& view) = 0;
};

/// Rebuilds its cells at each resize. A view narrower than a cell has none.
class BWCollectionView : public juce::Component, public IBWControlListener {
 public:
  BWCollectionView();

  /// Selects nothing. The source must outlive the view, unless it is replaced by null.
  void setDataSource(IBWCollectionViewDataSource* source);
  /// -1 if nothing is selected.
  int getSelected() const { return selected; }
  /// Does not notify the data source.
  void setSelected(int index);
  /// Scrolls the cell's row to the top, as far as there are rows below it.
  void scrollToCell(int index);
  juce::Viewport& getViewport() { return viewport; }

  void resized() override;
  bool keyPressed(const juce::KeyPress& key) override;
  std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

 private:
  void controlGestureBegan(IBWControl& control) override;
  void buildCells();
  void choose(int index);
  int columns() const;

  IBWCollectionViewDataSource* dataSource = nullptr;
  int selected = -1;
  juce::Point<int> cellSize;
  juce::Component content;
  juce::Viewport viewport;
  std::vector<std::shared_ptr<BWCollectionViewCell>> cells;
};

}  // namespace tesh::bramel
