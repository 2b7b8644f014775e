// A scrolling list of texts, one of which can be selected.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/BWSimpleListView.h"

#include <algorithm>
#include <utility>

#include "widgets/PanelColours.h"
#include "widgets/ProvidedResources.h"
#include "widgets/Text.h"

namespace tesh::bramel {
namespace {

constexpr const char* kRowFace = "Open Sans Regular";
constexpr double kRowFontHeight = 13.0;
constexpr float kUnderMouseAlpha = 0.08F;

}  // namespace

BWSimpleListView::BWSimpleListView()
    : dataSource(std::make_shared<BWSimpleListViewInternalDataSource>(std::vector<std::string>())),
      defaultRenderer(std::make_shared<BWSimpleListViewDefaultRenderer>()),
      renderer(defaultRenderer) {
  box.setRowHeight(kRowHeight);
  box.setColour(juce::ListBox::backgroundColourId, juce::Colours::transparentWhite);
  box.setModel(this);
  box.addMouseListener(this, true);
  // The viewport scrolls by wheel and keys; its own bar would take space from the rows.
  box.getViewport()->setScrollBarsShown(false, false, true, false);
  scrollBar.addListener(this);
  addAndMakeVisible(box);
  addAndMakeVisible(scrollBar);
}

BWSimpleListView::~BWSimpleListView() {
  box.removeMouseListener(this);
  box.setModel(nullptr);
}

void BWSimpleListView::setItems(std::vector<std::string> texts) {
  setDataSource(std::make_shared<BWSimpleListViewInternalDataSource>(std::move(texts)));
}

void BWSimpleListView::setDataSource(std::shared_ptr<const IBWSimpleListViewDataSource> source) {
  dataSource = std::move(source);
  selectRow(-1);
  const juce::ScopedValueSetter<bool> mute(muted, true);
  box.updateContent();
  box.repaint();
  updateScrollBar();
}

void BWSimpleListView::setRenderer(std::shared_ptr<const IBWSimpleListViewRenderer> newRenderer) {
  renderer = newRenderer == nullptr ? defaultRenderer : std::move(newRenderer);
  box.repaint();
}

void BWSimpleListView::setFontProvider(IBramelFontProvider& provider) {
  defaultRenderer->setFont(fontNamed(provider, kRowFace, kRowFontHeight));
  box.repaint();
}

void BWSimpleListView::selectRow(int row) {
  const juce::ScopedValueSetter<bool> mute(muted, true);
  selectedRow = row;
  if (row < 0) {
    box.deselectAllRows();
    return;
  }
  constexpr bool kStay = true;
  box.selectRow(row, kStay);
  bringIntoView(row);
}

/// Scrolls an invisible row to the middle, so that its neighbours are visible too, with a whole row at the top.
void BWSimpleListView::bringIntoView(int row) {
  juce::Viewport& viewport = *box.getViewport();
  const int height = viewport.getViewHeight();
  const int top = row * kRowHeight;
  if (height <= 0 || (top >= viewport.getViewPositionY() && top + kRowHeight <= viewport.getViewPositionY() + height)) {
    return;
  }
  const int rowsAbove = height / kRowHeight / 2;
  viewport.setViewPosition(0, std::max(row - rowsAbove, 0) * kRowHeight);
}

void BWSimpleListView::resized() {
  box.setBounds(getLocalBounds());
  scrollBar.setBounds(getLocalBounds().removeFromRight(getLookAndFeel().getDefaultScrollbarWidth()));
  updateScrollBar();
  if (selectedRow >= 0 && selectedRow < getNumRows()) {
    bringIntoView(selectedRow);
  }
}

void BWSimpleListView::updateScrollBar() {
  const juce::Viewport& viewport = *box.getViewport();
  scrollBar.setRangeLimits(0.0, getNumRows() * kRowHeight, juce::dontSendNotification);
  scrollBar.setCurrentRange(viewport.getViewPositionY(), viewport.getViewHeight(), juce::dontSendNotification);
}

void BWSimpleListView::scrollBarMoved(juce::ScrollBar* /*bar*/, double start) {
  box.getViewport()->setViewPosition(0, juce::roundToInt(start));
}

bool BWSimpleListView::keyPressed(const juce::KeyPress& key) {
  const juce::juce_wchar letter = key.getTextCharacter();
  if (key.getModifiers().isAnyModifierKeyDown() && !key.getModifiers().isShiftDown()) {
    return false;
  }
  if (!juce::CharacterFunctions::isLetterOrDigit(letter)) {
    return false;
  }
  if (listener != nullptr && listener->listKeyPressed(*this, selectedRow, key)) {
    return true;
  }
  const int row = typeAhead.find(letter, juce::Time::getMillisecondCounter(), selectedRow, getNumRows(),
                                 [this](int i) { return getNameForRow(i); });
  if (row >= 0) {
    box.selectRow(row);
    toldRow = -1;
  }
  return true;
}

bool BWSimpleListView::Rows::keyPressed(const juce::KeyPress& key) {
  const bool isUsed = ListBox::keyPressed(key);
  list.toldRow = -1;
  return isUsed;
}

void BWSimpleListView::mouseMove(const juce::MouseEvent& event) {
  const juce::Point<int> place = event.getEventRelativeTo(&box).getPosition();
  setRowUnderMouse(scrollBar.isMouseOverOrDragging() ? -1 : box.getRowContainingPosition(place.x, place.y));
}

void BWSimpleListView::mouseExit(const juce::MouseEvent& /*event*/) { setRowUnderMouse(-1); }

void BWSimpleListView::setRowUnderMouse(int row) {
  if (row != rowUnderMouse) {
    box.repaintRow(std::exchange(rowUnderMouse, row));
    box.repaintRow(row);
  }
}

int BWSimpleListView::getNumRows() { return dataSource->getRowCount(); }

juce::String BWSimpleListView::getNameForRow(int row) { return textFrom(dataSource->getRowText(row)); }

void BWSimpleListView::paintListBoxItem(int row, juce::Graphics& graphics, int width, int height, bool selected) {
  if (row < getNumRows()) {
    if (row == rowUnderMouse && !selected) {
      graphics.setColour(juce::Colour(colours::kSlate).withAlpha(kUnderMouseAlpha));
      graphics.fillRect(0, 0, width, height);
    }
    renderer->paintRow(getNameForRow(row), row, graphics, width, height, selected);
  }
}

void BWSimpleListView::selectedRowsChanged(int lastRow) {
  if (muted) {
    return;
  }
  selectedRow = lastRow;
  toldRow = lastRow;
  if (listener != nullptr) {
    listener->listRowSelected(*this, lastRow);
  }
}

/// The selected item may have been changed elsewhere meanwhile, so the click notifies again.
void BWSimpleListView::listBoxItemClicked(int row, const juce::MouseEvent& event) {
  const bool isTold = std::exchange(toldRow, -1) == row;
  const bool isPlainClick = event.mods.isLeftButtonDown() && event.getNumberOfClicks() == 1;
  if (tellsMarkedRow && !isTold && row == selectedRow && isPlainClick && listener != nullptr) {
    listener->listRowSelected(*this, row);
  }
  if (listener != nullptr) {
    listener->listRowClicked(*this, row, event);
  }
}

}  // namespace tesh::bramel
