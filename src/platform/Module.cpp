// Takes a reference to the library that is never released.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Module.h"

#ifdef _WIN32
#include "platform/WindowsApi.h"
#else
#include <dlfcn.h>
#endif

namespace tesh::bramel::platform {

void keepModuleLoaded() {
#ifdef _WIN32
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<LPCWSTR>(&keepModuleLoaded), &module);
#else
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&keepModuleLoaded), &info) != 0 && info.dli_fname != nullptr) {
    dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
  }
#endif
}

#ifdef _WIN32
void* moduleHandle() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&moduleHandle), &module);
  return module;
}
#endif

}  // namespace tesh::bramel::platform
