// Which window of the system gets the keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

// Message thread only. `window` is the system's handle; one that is gone changes nothing.

/// Whether the window takes keys while the mouse is over it or it has the focus. Otherwise they go to its parent.
void setTakesKeys(void* window, bool takesKeys);

bool hasKeyboardFocus(void* window);

void giveKeyboardFocusTo(void* window);

}  // namespace tesh::bramel::vst
