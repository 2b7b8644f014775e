// JUCE's connection to the X server, with Xlib. JUCE's header declares both only if a macro asks for it, which the
// precompiled header does not. For source files only: Xlib defines common names as macros.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <X11/Xlib.h>  // First: the others need it.

#include <X11/Xatom.h>
#include <X11/Xresource.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>

#undef KeyPress  // The name of a class of JUCE's.

#include <juce_gui_basics/native/x11/juce_linux_XWindowSystem.h>
