// Finds the rectangle of a pop-up: beside its anchor, and inside the editor.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <span>

#include "views/UIPopupDirection.h"

namespace tesh::bramel {

/// Pixels between anchor and pop-up, and between pop-up and the editor's edge.
inline constexpr int kPopupGap = 12;

/// The rectangle of a pop-up of `size`, in the coordinates of an editor of `slotSize`. Takes the first direction in
/// which it keeps the margin. If there is none, takes the first direction and moves the pop-up until it keeps the
/// margin. No direction means `rightCentre`. A pop-up larger than the editor is placed at its top left margin.
juce::Rectangle<int> placePopup(juce::Rectangle<int> anchor, juce::Point<int> slotSize, juce::Point<int> size,
                                std::span<const UIPopupDirection> directions);

}  // namespace tesh::bramel
