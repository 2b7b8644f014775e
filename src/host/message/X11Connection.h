// Makes JUCE's connection to the X server safe inside a host: hosts run without a window manager, and destroy windows
// while JUCE still draws on them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::vst {

/// Interns the atoms that JUCE looks up and takes for granted. Without a window manager they do not exist, and JUCE
/// would use atom 0, an X error that ends the host. Call before JUCE opens its connection.
void internWindowManagerAtoms();

/// Opens JUCE's connection and drops the errors of its requests, for example for a window that the host has destroyed.
/// The host's own error handler stays in place. Message thread; false without an X server.
bool openConnection();

/// Handles events that Xlib read together with a reply, which JUCE's own loop leaves until new data arrives, such as a
/// mouse movement. Returns whether there were any. Message thread.
bool takeQueuedEvents();

/// Handles waiting messages, timers and events. Returns whether there was anything. Message thread.
bool takeMessages();

/// One step of a message loop: handles waiting messages and events, or if there are none waits up to two seconds for
/// one. Message thread.
void serveMessages();

}  // namespace tesh::bramel::vst
