// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#define NOMINMAX
#include <shlobj.h>
#include <windows.h>

#include <array>

#include "platform/SpecialFolders.h"
#include "platform/WideText.h"

namespace tesh::bramel::platform {
namespace {

std::string specialFolder(const wchar_t* overrideName, int folderId) {
  std::array<wchar_t, 32768> text{};
  const DWORD size = GetEnvironmentVariableW(overrideName, text.data(), static_cast<DWORD>(text.size()));
  if (size > 0 && size < text.size()) {
    return toUtf8(text.data());
  }
  return SHGetSpecialFolderPathW(nullptr, text.data(), folderId, FALSE) == TRUE ? toUtf8(text.data()) : std::string();
}

}  // namespace

std::string moduleFolder() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&moduleFolder), &module);
  std::array<wchar_t, 32768> text{};
  GetModuleFileNameW(module, text.data(), static_cast<DWORD>(text.size()));
  const std::string file = toUtf8(text.data());
  return file.substr(0, file.find_last_of('\\'));
}

std::string commonFilesFolder() { return specialFolder(L"BRAMEL_COMMON_FILES", CSIDL_PROGRAM_FILES_COMMON); }

std::string documentsFolder() { return specialFolder(L"BRAMEL_DOCUMENTS", CSIDL_PERSONAL); }

}  // namespace tesh::bramel::platform
#endif
