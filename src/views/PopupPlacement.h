// Finds the rectangle of a pop-up: beside its anchor, and inside the editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <span>

#include "views/UIPopupDirection.h"

namespace tesh::bramel {

/// Pixels between anchor and pop-up, and between pop-up and the editor's edge.
inline constexpr int kPopupGap = 12;

/// The rectangle of a pop-up of `size` in the coordinates of an editor of `slotSize`. Takes the first direction that
/// keeps the margin by itself; if none does, the first direction, moved until it does. No direction counts as
/// `rightCentre`. A pop-up that is too large for the editor stands at its top left margin.
juce::Rectangle<int> placePopup(juce::Rectangle<int> anchor, juce::Point<int> slotSize, juce::Point<int> size,
                                std::span<const UIPopupDirection> directions);

}  // namespace tesh::bramel
