// What a simple list asks of the outside: its rows, their drawing, and who hears of a choice. Message thread only.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <string>
#include <utility>
#include <vector>

namespace tesh::bramel {

class BWSimpleListView;

/// Must not delete the list inside a call.
class IBWSimpleListViewListener {
 public:
  virtual ~IBWSimpleListViewListener() = default;

  /// By the user's hand or keys; -1 when nothing is left selected.
  virtual void listRowSelected(BWSimpleListView& list, int row) = 0;
  /// By any mouse button; the row is selected already.
  virtual void listRowClicked(BWSimpleListView& /*list*/, int /*row*/, const juce::MouseEvent& /*event*/) {}
  /// A key that the list would search for, with the row that is selected, or -1. True if the listener has used it.
  virtual bool listKeyPressed(BWSimpleListView& /*list*/, int /*row*/, const juce::KeyPress& /*key*/) { return false; }
};

class IBWSimpleListViewDataSource {
 public:
  virtual ~IBWSimpleListViewDataSource() = default;

  /// UTF-8. The empty string for a row that does not exist.
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

  /// Draws a row into 0, 0, `width`, `height`.
  virtual void paintRow(const juce::String& text, int row, juce::Graphics& graphics, int width, int height,
                        bool selected) const = 0;
};

/// A line above each row but the first, a fill, and the text 6 pixels from the left.
class BWSimpleListViewDefaultRenderer : public IBWSimpleListViewRenderer {
 public:
  BWSimpleListViewDefaultRenderer();
  void setFont(const juce::Font& newFont) { font = newFont; }
  void paintRow(const juce::String& text, int row, juce::Graphics& graphics, int width, int height,
                bool selected) const override;

 private:
  juce::Font font;  ///< The default face at its default height.
  juce::Colour unselectedFill;
  juce::Colour unselectedText;
  juce::Colour selectedFill;
  juce::Colour selectedText;
  juce::Colour separator;
};

}  // namespace tesh::bramel
