// Keyboard focus of windows, by the system's own calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

// Message thread only. `window` is the system's handle; a window that no longer exists is ignored.

/// Whether the window gets keys while it has the focus or the mouse is over it. Otherwise its parent gets them.
void setTakesKeys(void* window, bool takesKeys);

bool hasKeyboardFocus(void* window);

/// The window with the focus, if it shares the top-level window with `window` and does not lie inside it; else null.
void* focusedBeside(void* window);

/// The parent of `window`; null if there is none.
void* parentOf(void* window);

void giveKeyboardFocusTo(void* window);

/// Wakes the message loop if the system's library already holds events of the window, which it read together with a
/// reply. The loop waits for new data alone and would leave them until the next event comes.
void awakenForQueuedEvents(void* window);

}  // namespace tesh::bramel::vst
