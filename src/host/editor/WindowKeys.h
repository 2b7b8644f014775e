// Which window of the system gets the keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

// Message thread only. `window` is the system's handle; one that is gone changes nothing.

/// Whether the window takes keys while the mouse is over it or it has the focus. Otherwise they go to its parent.
void setTakesKeys(void* window, bool takesKeys);

bool hasKeyboardFocus(void* window);

/// The window with the focus, if it shares the top-level window with `window` and does not lie inside it; else null.
void* focusedBeside(void* window);

/// The parent of `window`; null if there is none.
void* parentOf(void* window);

void giveKeyboardFocusTo(void* window);

/// Wakes the message loop if events of the window are waiting inside the system's library, which read them together
/// with an answer: otherwise the loop would sleep until the next event comes.
void awakenForQueuedEvents(void* window);

}  // namespace tesh::bramel::vst
