// Finds an embedded resource among the resources of the library or program that this code is linked into.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32

#include <string>

#include "platform/EmbeddedResources.h"
#include "platform/Module.h"
#include "platform/WideText.h"
#include "platform/WindowsApi.h"

namespace tesh::bramel::platform {

std::span<const std::uint8_t> findEmbeddedResource(std::string_view type, std::string_view name) {
  const auto module = static_cast<HMODULE>(moduleHandle());
  // Windows compares both without regard to case, but a type must be spelt exactly.
  if (type != "PNG" && type != "TTF") {
    return {};
  }
  const std::wstring wideName = toWide(std::string(name));
  HRSRC found = FindResourceW(module, wideName.c_str(), toWide(std::string(type)).c_str());
  HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
  const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
  if (bytes == nullptr) {
    return {};
  }
  return {static_cast<const std::uint8_t*>(bytes), SizeofResource(module, found)};
}

}  // namespace tesh::bramel::platform

#endif
