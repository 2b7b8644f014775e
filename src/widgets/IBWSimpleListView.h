// The interfaces of a simple list: its rows, their drawing, and its listener. Message thread only.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <string>
#include <utility>
#include <vector>

namespace tesh::bramel {

class BWSimpleListView;

/// The listener must not delete the list inside a call.
class IBWSimpleListViewListener {
 public:
  virtual ~IBWSimpleListViewListener() = default;

  /// Selected by the user's mouse or keys; -1 if no row is selected any more.
  virtual void listRowSelected(BWSimpleListView& list, int row) = 0;
  /// Clicked by any mouse button; the row is already selected.
  virtual void listRowClicked(BWSimpleListView& /*list*/, int /*row*/, const juce::MouseEvent& /*event*/) {}
  /// A key that the list would use for searching, with the selected row, or -1. True if the listener has used it.
  virtual bool listKeyPressed(BWSimpleListView& /*list*/, int /*row*/, const juce::KeyPress& /*key*/) { return false; }
};

class IBWSimpleListViewDataSource {
 public:
  virtual ~IBWSimpleListViewDataSource() = default;

  /// UTF-8. Empty for a row that does not exist.
  virtual std::string getRowText(int row) const = 0;
  virtual int getRowCount() const = 0;
};

class BWSimpleListViewInternalDataSource : public IBWSimpleListViewDataSource {
 public:
  explicit BWSimpleListViewInternalDataSource(std::vector<std::string> rows) : texts(std::move(rows)) {}
  std::string getRowText(int row) const override;
  int getRowCount() const override { return static_cast<int>(texts.size()); }

 private:
  std::vector<std::string> texts;
};

class IBWSimpleListViewRenderer {
 public:
  virtual ~IBWSimpleListViewRenderer() = default;

  /// Draws a row into the rectangle 0, 0, `width`, `height`.
  virtual void paintRow(const juce::String& text, int row, juce::Graphics& graphics, int width, int height,
                        bool selected) const = 0;
};

/// Draws a line above each row except the first, a fill, and the text 6 pixels from the left.
class BWSimpleListViewDefaultRenderer : public IBWSimpleListViewRenderer {
 public:
  BWSimpleListViewDefaultRenderer();
  void setFont(const juce::Font& newFont) { font = newFont; }
  void paintRow(const juce::String& text, int row, juce::Graphics& graphics, int width, int height,
                bool selected) const override;

 private:
  juce::Font font;  ///< The default typeface at its default height.
  juce::Colour unselectedFill;
  juce::Colour unselectedText;
  juce::Colour selectedFill;
  juce::Colour selectedText;
  juce::Colour separator;
};

}  // namespace tesh::bramel
