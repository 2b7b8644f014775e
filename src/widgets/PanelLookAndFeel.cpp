// The look of the JUCE widgets that the views use.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/PanelLookAndFeel.h"

#include "widgets/PanelColours.h"

namespace tesh::bramel {
namespace {

constexpr float kThumbWidth = 5.0F;
constexpr float kThumbAlpha = 0.38F;
constexpr int kShortestThumb = 24;
constexpr float kEditorCorner = 3.0F;
constexpr float kEditorAlpha = 0.35F;
constexpr float kSelectionAlpha = 0.4F;

}  // namespace

PanelLookAndFeel::PanelLookAndFeel() : juce::LookAndFeel_V4(getLightColourScheme()) {
  const juce::Colour text(colours::kSlate);
  const juce::Colour selection = juce::Colour(colours::kPeriwinkle).withAlpha(kSelectionAlpha);
  setColour(juce::Label::textColourId, text);
  setColour(juce::ScrollBar::thumbColourId, text.withAlpha(kThumbAlpha));
  setColour(juce::ListBox::textColourId, text);
  setColour(juce::ListBox::backgroundColourId, juce::Colours::transparentWhite);

  // The background has round corners, so the editor must not count as opaque.
  setColour(juce::TextEditor::backgroundColourId, juce::Colours::transparentWhite);
  setColour(juce::TextEditor::textColourId, text);
  setColour(juce::TextEditor::highlightColourId, selection);
  setColour(juce::TextEditor::highlightedTextColourId, text);
  setColour(juce::TextEditor::outlineColourId, text.withAlpha(kEditorAlpha));
  setColour(juce::TextEditor::focusedOutlineColourId, juce::Colour(colours::kCobalt));
  setColour(juce::CaretComponent::caretColourId, text);

  setColour(juce::FileBrowserComponent::filenameBoxTextColourId, text);
  setColour(juce::FileBrowserComponent::currentPathBoxTextColourId, text);

  setColour(juce::PopupMenu::backgroundColourId, juce::Colours::white);
  setColour(juce::PopupMenu::textColourId, text);
  setColour(juce::PopupMenu::highlightedBackgroundColourId, text);
  setColour(juce::PopupMenu::highlightedTextColourId, juce::Colour(colours::kActionFill).withAlpha(1.0F));
}

void PanelLookAndFeel::setDefaultFace(const juce::Typeface::Ptr& face) {
  if (face != nullptr) {
    setDefaultSansSerifTypeface(face);
  }
}

int PanelLookAndFeel::getMinimumScrollbarThumbSize(juce::ScrollBar& /*bar*/) { return kShortestThumb; }

void PanelLookAndFeel::drawScrollbar(juce::Graphics& graphics, juce::ScrollBar& bar, int x, int y, int width,
                                     int height, bool isVertical, int thumbStart, int thumbSize, bool /*isMouseOver*/,
                                     bool /*isMouseDown*/) {
  const auto area = juce::Rectangle<int>(x, y, width, height).toFloat();
  const auto start = static_cast<float>(thumbStart);
  const auto size = static_cast<float>(thumbSize);
  const auto thumb =
      isVertical ? juce::Rectangle<float>(kThumbWidth, size).withCentre({area.getCentreX(), start + size / 2.0F})
                 : juce::Rectangle<float>(size, kThumbWidth).withCentre({start + size / 2.0F, area.getCentreY()});
  graphics.setColour(bar.findColour(juce::ScrollBar::thumbColourId));
  graphics.fillRoundedRectangle(thumb, kThumbWidth / 2.0F);
}

void PanelLookAndFeel::fillTextEditorBackground(juce::Graphics& graphics, int width, int height,
                                                juce::TextEditor& /*editor*/) {
  graphics.setColour(juce::Colours::white);
  graphics.fillRoundedRectangle(juce::Rectangle<int>(width, height).toFloat(), kEditorCorner);
}

void PanelLookAndFeel::drawTextEditorOutline(juce::Graphics& graphics, int width, int height,
                                             juce::TextEditor& editor) {
  const bool focused = editor.hasKeyboardFocus(true);
  const float thickness = focused ? 2.0F : 1.0F;
  graphics.setColour(
      editor.findColour(focused ? juce::TextEditor::focusedOutlineColourId : juce::TextEditor::outlineColourId));
  graphics.drawRoundedRectangle(juce::Rectangle<int>(width, height).toFloat().reduced(thickness / 2.0F), kEditorCorner,
                                thickness);
}

void PanelLookAndFeel::drawAlertBox(juce::Graphics& graphics, juce::AlertWindow& alert,
                                    const juce::Rectangle<int>& /*textArea*/, juce::TextLayout& layout) {
  constexpr int kSignSpace = 80;  // Width that the window leaves beside its text.
  constexpr float kSign = 48.0F;
  constexpr float kSignCorner = 4.0F;
  constexpr int kTextTop = 30;
  const auto box = alert.getLocalBounds();
  graphics.fillAll(juce::Colours::white);
  graphics.setColour(alert.findColour(juce::TextEditor::outlineColourId));
  graphics.drawRect(box);
  const bool hasSign = alert.getAlertType() != juce::MessageBoxIconType::NoIcon;
  if (hasSign) {
    const auto sign = juce::Rectangle<float>(kSign, kSign).withCentre({kSignSpace / 2.0F, kTextTop + kSign / 2.0F});
    juce::Path triangle;
    triangle.addTriangle(sign.getBottomLeft(), sign.getBottomRight(), {sign.getCentreX(), sign.getY()});
    graphics.setColour(juce::Colour(colours::kAmber));
    graphics.fillPath(triangle.createPathWithRoundedCorners(kSignCorner));
    graphics.setColour(juce::Colour(colours::kSlate));
    graphics.setFont(juce::Font(kSign / 2.0F, juce::Font::bold));
    graphics.drawText("!", sign.withTrimmedTop(kSign / 4.0F), juce::Justification::centred);
  }
  const int left = hasSign ? kSignSpace : 0;
  layout.draw(graphics, box.withTrimmedLeft(left).withTrimmedTop(kTextTop).toFloat());
}

}  // namespace tesh::bramel
