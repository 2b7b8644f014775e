// Positions of the menus that find sounds or delete kits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "views/BWPopupSlotView.h"

namespace tesh::bramel {

/// On Windows inside the panel: a menu in its own window would close at once if the host keeps the focus.
inline juce::PopupMenu::Options menuPlaceIn(juce::Component& target) {
  const auto options = juce::PopupMenu::Options().withTargetComponent(&target);
#ifdef _WIN32
  return options.withParentComponent(BWPopupSlotView::above(&target));
#else
  return options;
#endif
}

/// Beside the row of a list, so that the list stays visible: on the right, or on the left if the screen, or on Windows
/// the panel, ends there. `row` is in the list's coordinates.
inline juce::PopupMenu::Options menuPlaceBeside(juce::Component& list, juce::Rectangle<int> row) {
  constexpr int kWidth = 160;
  const auto options = menuPlaceIn(list).withMinimumWidth(kWidth);
  const juce::Rectangle<int> place = list.localAreaToGlobal(row);
  const juce::Rectangle<int> screen = list.localAreaToGlobal(list.getLocalBounds());
  const int width = list.localAreaToGlobal(juce::Rectangle<int>(kWidth, 1)).getWidth();
  int end = screen.getRight() + width;
  if (const auto* const parent = options.getParentComponent()) {
    end = parent->getScreenBounds().getRight();
  } else if (const auto* const display = juce::Desktop::getInstance().getDisplays().getDisplayForRect(place)) {
    end = display->userArea.getRight();
  }
  const bool isRoomOnTheRight = screen.getRight() + width <= end;
  return options.withTargetScreenArea(
      {isRoomOnTheRight ? screen.getRight() : screen.getX() - width, place.getY(), 1, 1});
}

}  // namespace tesh::bramel
