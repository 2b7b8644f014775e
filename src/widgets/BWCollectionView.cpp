// A scrolling grid of cells of one size.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWCollectionView.h"

#include <algorithm>
#include <utility>

namespace tesh::bramel {

BWCollectionView::BWCollectionView() {
  viewport.setScrollBarsShown(true, false);
  viewport.setViewedComponent(&content, false);
  // Keys select cells, and the view scrolls to them.
  viewport.setWantsKeyboardFocus(false);
  setWantsKeyboardFocus(true);
  addAndMakeVisible(viewport);
}

void BWCollectionView::setDataSource(IBWCollectionViewDataSource* source) {
  dataSource = source;
  selected = -1;
  buildCells();
}

void BWCollectionView::setSelected(int index) {
  selected = index;
  for (const auto& cell : cells) {
    cell->setSelected(static_cast<int>(cell->getIndex()) == selected);
  }
}

void BWCollectionView::scrollToCell(int index) {
  const int perLine = columns();
  if (index >= 0 && perLine > 0) {
    viewport.setViewPosition(0, index / perLine * cellSize.y);
  }
}

void BWCollectionView::resized() {
  viewport.setBounds(getLocalBounds());
  buildCells();
}

void BWCollectionView::buildCells() {
  cells.clear();
  const int count = dataSource == nullptr ? 0 : dataSource->getCellCount(*this);
  cellSize = count > 0 ? dataSource->getCellSize(*this) : juce::Point<int>();
  const int perLine = columns();
  if (perLine == 0) {
    return;
  }
  const int lines = (count - 1 + perLine) / perLine;
  content.setSize(cellSize.x * perLine, cellSize.y * lines);
  for (int i = 0; i < count; ++i) {
    auto cell = dataSource->makeCell(*this);
    dataSource->fillCell(*this, *cell, i);
    cell->setBounds(i % perLine * cellSize.x, i / perLine * cellSize.y, cellSize.x, cellSize.y);
    cell->setIndex(static_cast<std::uint64_t>(i));
    cell->setListener(this);
    cell->setSelected(i == selected);
    content.addAndMakeVisible(*cell);
    cells.push_back(std::move(cell));
  }
}

/// The number of columns; 0 if there is no room or no cell.
int BWCollectionView::columns() const { return cellSize.x > 0 ? viewport.getMaximumVisibleWidth() / cellSize.x : 0; }

void BWCollectionView::controlGestureBegan(IBWControl& control) {
  if (const auto* const cell = dynamic_cast<BWCollectionViewCell*>(&control)) {
    choose(static_cast<int>(cell->getIndex()));
  }
}

void BWCollectionView::choose(int index) {
  setSelected(index);
  if (dataSource != nullptr) {
    dataSource->cellSelected(*this);
  }
}

bool BWCollectionView::keyPressed(const juce::KeyPress& key) {
  const int perLine = columns();
  if (cells.empty() || perLine == 0) {
    return false;
  }
  const int page = std::max(viewport.getViewHeight() / cellSize.y, 1) * perLine;
  const int last = static_cast<int>(cells.size()) - 1;
  const std::pair<int, int> moves[] = {{juce::KeyPress::leftKey, -1},        {juce::KeyPress::rightKey, 1},
                                       {juce::KeyPress::upKey, -perLine},    {juce::KeyPress::downKey, perLine},
                                       {juce::KeyPress::pageUpKey, -page},   {juce::KeyPress::pageDownKey, page},
                                       {juce::KeyPress::homeKey, -last - 1}, {juce::KeyPress::endKey, last + 1}};
  for (const auto& [code, distance] : moves) {
    if (key.isKeyCode(code)) {
      const int index = std::clamp(selected + distance, 0, last);
      const juce::Rectangle<int> bounds = cells[static_cast<std::size_t>(index)]->getBounds();
      const juce::Rectangle<int> shown = viewport.getViewArea();
      viewport.setViewPosition(0, std::clamp(shown.getY(), bounds.getBottom() - shown.getHeight(), bounds.getY()));
      choose(index);
      return true;
    }
  }
  return false;
}

std::unique_ptr<juce::AccessibilityHandler> BWCollectionView::createAccessibilityHandler() {
  return std::make_unique<juce::AccessibilityHandler>(*this, juce::AccessibilityRole::list);
}

}  // namespace tesh::bramel
