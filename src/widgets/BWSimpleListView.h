// A scrolling list of texts, one of which can be selected by mouse, by arrow and page keys, and by typing first
// letters.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <string>
#include <vector>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "widgets/IBWSimpleListView.h"
#include "widgets/TypeAhead.h"

namespace tesh::bramel {

/// The scroll bar overlays the rows, which take the whole width. The row under the mouse is tinted.
class BWSimpleListView : public juce::Component, public juce::ListBoxModel, private juce::ScrollBar::Listener {
 public:
  static constexpr int kRowHeight = 28;

  BWSimpleListView();
  ~BWSimpleListView() override;

  /// The listener must outlive the list, unless it is replaced by null.
  void setListener(IBWSimpleListViewListener* newListener) { listener = newListener; }
  /// Replaces all rows and selects none. Keeps the scroll position as far as possible. Notifies nobody.
  void setItems(std::vector<std::string> texts);
  void setDataSource(std::shared_ptr<const IBWSimpleListViewDataSource> source);
  /// Null restores the default renderer.
  void setRenderer(std::shared_ptr<const IBWSimpleListViewRenderer> newRenderer);
  /// Sets the font of the default renderer: "Open Sans Regular" at 13.
  void setFontProvider(IBramelFontProvider& provider);

  /// Selects this row only and scrolls it into view; -1 selects nothing. Notifies nobody.
  void selectRow(int row);
  /// Whether a click on the row that is already selected notifies too, for a list that does not follow changes of the
  /// selected item from elsewhere. Off at first.
  void setTellsMarkedRow(bool tells) { tellsMarkedRow = tells; }
  void scrollToTop() { box.setVerticalPosition(0.0); }
  int getSelectedRow() const { return selectedRow; }
  /// In the list's coordinates; outside its bounds for an invisible row.
  juce::Rectangle<int> rowBounds(int row) const { return box.getRowPosition(row, true) + box.getPosition(); }
  /// The list's name for a screen reader.
  void setListTitle(const juce::String& title) { box.setTitle(title); }

  void resized() override;
  bool keyPressed(const juce::KeyPress& key) override;

  int getNumRows() override;
  juce::String getNameForRow(int row) override;
  void paintListBoxItem(int row, juce::Graphics& graphics, int width, int height, bool selected) override;
  void selectedRowsChanged(int lastRow) override;
  void listWasScrolled() override { updateScrollBar(); }
  void listBoxItemClicked(int row, const juce::MouseEvent& event) override;

  // Receives the rows' mouse events too.
  void mouseMove(const juce::MouseEvent& event) override;
  void mouseExit(const juce::MouseEvent& event) override;

 private:
  /// A key's selection has been notified; a later click on that row notifies again.
  class Rows final : public juce::ListBox {
   public:
    explicit Rows(BWSimpleListView& ownList) : list(ownList) {}
    bool keyPressed(const juce::KeyPress& key) override;

   private:
    BWSimpleListView& list;
  };

  void scrollBarMoved(juce::ScrollBar* bar, double start) override;
  void updateScrollBar();
  void bringIntoView(int row);
  void setRowUnderMouse(int row);

  IBWSimpleListViewListener* listener = nullptr;
  std::shared_ptr<const IBWSimpleListViewDataSource> dataSource;
  std::shared_ptr<BWSimpleListViewDefaultRenderer> defaultRenderer;
  std::shared_ptr<const IBWSimpleListViewRenderer> renderer;
  Rows box{*this};
  juce::ScrollBar scrollBar{true};
  TypeAhead typeAhead;
  bool muted = false;
  bool tellsMarkedRow = false;
  int selectedRow = -1;
  int toldRow = -1;        ///< The row that the current click has notified.
  int rowUnderMouse = -1;  ///< -1 for none.
};

}  // namespace tesh::bramel
