// Asks Windows, which has such a call since version 10.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/editor/WindowScale.h"

#ifdef _WIN32
#include "platform/WindowsApi.h"
#endif

namespace tesh::bramel::vst {

#ifdef _WIN32
float scaleOfWindow(void* window) {
  constexpr float kPlainDots = 96.0F;
  using DotsOfWindow = UINT(WINAPI*)(HWND);
  const auto dotsOf = reinterpret_cast<DotsOfWindow>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  const UINT dots = dotsOf == nullptr ? 0 : dotsOf(static_cast<HWND>(window));
  return dots == 0 ? 1.0F : static_cast<float>(dots) / kPlainDots;
}
#else
float scaleOfWindow(void* /*window*/) { return 1.0F; }
#endif

}  // namespace tesh::bramel::vst
