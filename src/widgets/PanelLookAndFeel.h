// The look of the JUCE widgets that the views use: scroll bars, text editors, labels and menus.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace tesh::bramel {

/// JUCE asks the process's default look-and-feel for typefaces. One object must therefore be made the default
/// (`juce::LookAndFeel::setDefaultLookAndFeel`) before the first text is laid out, and be removed before it is
/// destroyed.
class PanelLookAndFeel : public juce::LookAndFeel_V4 {
 public:
  PanelLookAndFeel();

  /// The typeface of all fonts without a name. Must be called before any such font is used; ignores null.
  void setDefaultFace(const juce::Typeface::Ptr& face);

  int getDefaultScrollbarWidth() override { return 8; }
  int getMinimumScrollbarThumbSize(juce::ScrollBar& bar) override;
  bool areScrollbarButtonsVisible() override { return false; }
  void drawScrollbar(juce::Graphics& graphics, juce::ScrollBar& bar, int x, int y, int width, int height,
                     bool isVertical, int thumbStart, int thumbSize, bool isMouseOver, bool isMouseDown) override;

  void fillTextEditorBackground(juce::Graphics& graphics, int width, int height, juce::TextEditor& editor) override;
  /// Shows the whole warning sign beside the text.
  void drawAlertBox(juce::Graphics& graphics, juce::AlertWindow& alert, const juce::Rectangle<int>& textArea,
                    juce::TextLayout& layout) override;
  void drawTextEditorOutline(juce::Graphics& graphics, int width, int height, juce::TextEditor& editor) override;
};

}  // namespace tesh::bramel
