// The rows of a simple list and their default drawing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/IBWSimpleListView.h"

#include "widgets/PanelColours.h"

namespace tesh::bramel {
namespace {

constexpr int kTextMargin = 6;
constexpr float kSeparatorThickness = 0.5F;

}  // namespace

std::string BWSimpleListViewInternalDataSource::getRowText(int row) const {
  return row >= 0 && row < getRowCount() ? texts[static_cast<std::size_t>(row)] : std::string();
}

BWSimpleListViewDefaultRenderer::BWSimpleListViewDefaultRenderer()
    : unselectedFill(juce::Colours::transparentBlack),
      unselectedText(colours::kActionText),
      selectedFill(colours::kActionText),
      selectedText(colours::kActionFill),
      separator(colours::kSeparator) {}

void BWSimpleListViewDefaultRenderer::paintRow(const juce::String& text, int row, juce::Graphics& graphics, int width,
                                               int height, bool selected) const {
  if (row > 0) {
    graphics.setColour(separator);
    graphics.fillRect(0.0F, 0.0F, static_cast<float>(width), kSeparatorThickness);
  }
  graphics.setColour(selected ? selectedFill : unselectedFill);
  graphics.fillRect(0, 0, width, height);
  graphics.setColour(selected ? selectedText : unselectedText);
  graphics.setFont(font);
  graphics.drawText(text, kTextMargin, 0, width - 2 * kTextMargin, height, juce::Justification::centredLeft);
}

}  // namespace tesh::bramel
