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

/// The window that `window` stands in; null if there is none.
void* parentOf(void* window);

void giveKeyboardFocusTo(void* window);

/// Sees to it that the message loop takes the window's events that were read from the system together with an answer,
/// while nobody looked for events: the loop would sleep until the next one comes.
void awakenForQueuedEvents(void* window);

}  // namespace tesh::bramel::vst
