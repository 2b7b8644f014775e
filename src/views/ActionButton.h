// The grey buttons in pop-ups.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "widgets/BWFlatToggleButton.h"
#include "widgets/PanelColours.h"

namespace tesh::bramel {

inline constexpr int kActionButtonWidth = 60;
inline constexpr int kActionButtonHeight = 24;
inline constexpr double kActionFontHeight = 12.0;

/// An action button's colours for one state; its other state swaps `fill` and `text`.
inline BWFlatToggleButton::Colours actionColours(std::uint32_t fill, std::uint32_t text) {
  return {.fill = juce::Colour(fill), .text = juce::Colour(text)};
}

/// A momentary button of kActionButtonWidth by kActionButtonHeight, with `listener` as its listener.
inline std::shared_ptr<BWFlatToggleButton> makeActionButton(const char* text, const juce::Font& font,
                                                            IBWControlListener& listener) {
  constexpr float kCornerSize = 2.0F;
  auto button = std::make_shared<BWFlatToggleButton>();
  button->setMomentary(true);
  button->setOutlineThickness(0.0F);
  button->setCornerSize(kCornerSize);
  button->setOffColours(actionColours(colours::kActionFill, colours::kActionText));
  button->setOnColours(actionColours(colours::kActionText, colours::kActionFill));
  button->setFont(font);
  button->setText(text);
  button->setListener(&listener);
  button->setSize(kActionButtonWidth, kActionButtonHeight);
  return button;
}

}  // namespace tesh::bramel
