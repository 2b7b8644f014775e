// Keyboard focus of a window, through Windows. Keys go to the window with the focus, wherever the mouse is.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include "host/editor/WindowKeys.h"
#include "platform/WindowsApi.h"

namespace tesh::bramel::vst {
namespace {

HWND handleOf(void* window) { return static_cast<HWND>(window); }

}  // namespace

void setTakesKeys(void* /*window*/, bool /*takesKeys*/) {}

bool hasKeyboardFocus(void* window) { return GetFocus() == handleOf(window); }

void* focusedBeside(void* window) {
  HWND focused = GetFocus();
  HWND own = handleOf(window);
  const bool isHosts = focused != nullptr && GetAncestor(focused, GA_ROOT) == GetAncestor(own, GA_ROOT) &&
                       focused != own && IsChild(own, focused) == FALSE;
  return isHosts ? focused : nullptr;
}

void* parentOf(void* window) { return GetAncestor(handleOf(window), GA_PARENT); }

void giveKeyboardFocusTo(void* window) { SetFocus(handleOf(window)); }

void awakenForQueuedEvents(void* /*window*/) {}  // No library reads events ahead of the loop here.

}  // namespace tesh::bramel::vst

#endif
