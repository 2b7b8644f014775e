// Where menus of the right mouse button open.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "views/BWPopupSlotView.h"

namespace tesh::bramel {

/// On Windows inside the panel: a menu in a window of its own is shut at once where the host keeps the focus.
inline juce::PopupMenu::Options menuPlaceIn(juce::Component& target) {
  const auto options = juce::PopupMenu::Options().withTargetComponent(&target);
#ifdef _WIN32
  return options.withParentComponent(BWPopupSlotView::above(&target));
#else
  return options;
#endif
}

}  // namespace tesh::bramel
