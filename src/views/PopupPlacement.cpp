// Places a pop-up beside its anchor and moves it inside the slot.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/PopupPlacement.h"

#include <algorithm>

namespace tesh::bramel {
namespace {

constexpr UIPopupDirection kDefaultDirection = UIPopupDirection::rightCentre;

/// Start of a span of `length` that is aligned with the start, centre or end of `from` to `from + extent`.
int aligned(int alignment, int from, int extent, int length) {
  switch (alignment) {
    case 0:
      return from;
    case 1:
      return from + (extent - length) / 2;
    default:
      return from + extent - length;
  }
}

juce::Point<int> wantedPosition(juce::Rectangle<int> anchor, juce::Point<int> size, UIPopupDirection direction) {
  if (direction == UIPopupDirection::corner) {
    return {0, 0};
  }
  if (direction == UIPopupDirection::over) {
    return {aligned(1, anchor.getX(), anchor.getWidth(), size.x),
            aligned(1, anchor.getY(), anchor.getHeight(), size.y)};
  }
  const int value = static_cast<int>(direction);
  const int along = value % 3;
  const int leftX = anchor.getX() - kPopupGap - size.x;
  const int aboveY = anchor.getY() - kPopupGap - size.y;
  switch (value / 3) {
    case 0:
      return {leftX, aligned(along, anchor.getY(), anchor.getHeight(), size.y)};
    case 1:
      return {anchor.getRight() + kPopupGap, aligned(along, anchor.getY(), anchor.getHeight(), size.y)};
    case 2:
      return {aligned(along, anchor.getX(), anchor.getWidth(), size.x), aboveY};
    default:
      return {aligned(along, anchor.getX(), anchor.getWidth(), size.x), anchor.getBottom() + kPopupGap};
  }
}

juce::Point<int> keptInside(juce::Point<int> position, juce::Point<int> size, juce::Point<int> slotSize) {
  const int x = std::min(position.x, slotSize.x - kPopupGap - size.x);
  const int y = std::min(position.y, slotSize.y - kPopupGap - size.y);
  return {std::max(x, kPopupGap), std::max(y, kPopupGap)};
}

}  // namespace

juce::Rectangle<int> placePopup(juce::Rectangle<int> anchor, juce::Point<int> slotSize, juce::Point<int> size,
                                std::span<const UIPopupDirection> directions) {
  const std::span<const UIPopupDirection> tried = directions.empty() ? std::span(&kDefaultDirection, 1) : directions;
  for (const UIPopupDirection direction : tried) {
    const juce::Point<int> wanted = wantedPosition(anchor, size, direction);
    if (direction == UIPopupDirection::corner || keptInside(wanted, size, slotSize) == wanted) {
      return {wanted.x, wanted.y, size.x, size.y};
    }
  }
  const juce::Point<int> moved = keptInside(wantedPosition(anchor, size, tried.front()), size, slotSize);
  return {moved.x, moved.y, size.x, size.y};
}

}  // namespace tesh::bramel
