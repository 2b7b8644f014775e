// What JUCE's connection to the X server needs inside a host: hosts run without a window manager, and destroy windows
// that are still drawn on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

/// Makes the server know the names that JUCE asks for and takes as given. Without a window manager nobody else does,
/// and JUCE would use atom 0, an error that ends the host. Before JUCE opens its connection.
void internWindowManagerAtoms();

/// Opens JUCE's connection and drops the errors of its requests, as one for a window that the host has destroyed. The
/// host's own error handler stays as it is. Message thread; false without an X server.
bool openConnection();

/// Serves the events that were read from the server together with an answer, which JUCE's own loop leaves until
/// something else comes, such as a movement of the mouse. Returns whether there were any. Message thread.
bool takeQueuedEvents();

/// Serves what waits: messages, timers and events. Returns whether there was anything. Message thread.
bool takeMessages();

/// One step of a message loop: serves what waits, or waits until there is something, two seconds at most. Message
/// thread.
void serveMessages();

}  // namespace tesh::bramel::vst
