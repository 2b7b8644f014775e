// Shared data and documents where Windows keeps them.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#include "platform/WindowsApi.h"

// These headers need the declarations above.
#include <shlobj.h>
#include <shlwapi.h>

#include <array>
#include <utility>

#include "platform/PluginBundle.h"
#include "platform/SpecialFolders.h"
#include "platform/WideText.h"

namespace tesh::bramel::platform {
namespace {

/// An environment variable; empty if it is not set.
std::string environment(const wchar_t* name) {
  std::wstring value(kLongestPath, L'\0');
  const DWORD size = GetEnvironmentVariableW(name, value.data(), kLongestPath);
  value.resize(size < kLongestPath ? size : 0);
  return toUtf8(value);
}

/// A folder of the system by its CSIDL number; empty if the system has none.
std::string systemFolder(int folder) {
  std::array<wchar_t, MAX_PATH> path{};
  return SHGetSpecialFolderPathW(nullptr, path.data(), folder, FALSE) == TRUE ? toUtf8(path.data()) : std::string();
}

}  // namespace

std::string moduleFolder() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&moduleFolder), &module);
  std::wstring file(kLongestPath, L'\0');
  file.resize(GetModuleFileNameW(module, file.data(), kLongestPath));
  const std::size_t end = file.find_last_of(L'\\');
  return end == std::wstring::npos ? std::string() : toUtf8(file.substr(0, end));
}

std::vector<std::string> commonFilesPlaces() {
  if (std::string chosen = environment(L"BRAMEL_COMMON_FILES"); !chosen.empty()) {
    return {std::move(chosen)};
  }
  const std::string beside = moduleFolder();
  const std::string users = systemFolder(CSIDL_LOCAL_APPDATA);
  std::vector<std::string> folders{beside, folderAroundBundle(beside),
                                   users.empty() ? users : users + "\\Programs\\Common",
                                   systemFolder(CSIDL_PROGRAM_FILES_COMMON)};
  std::erase(folders, std::string());
  return folders;
}

std::string commonFilesFolder() {
  if (std::string chosen = environment(L"BRAMEL_COMMON_FILES"); !chosen.empty()) {
    return chosen;
  }
  for (const std::string& folder : commonFilesPlaces()) {
    if (PathIsDirectoryW(toWide(folder + "\\Tesh\\Bramel").c_str()) != FALSE) {
      return folder;
    }
  }
  return systemFolder(CSIDL_PROGRAM_FILES_COMMON);
}

std::string documentsFolder() {
  const std::string chosen = environment(L"BRAMEL_DOCUMENTS");
  return chosen.empty() ? systemFolder(CSIDL_PERSONAL) : chosen;
}

}  // namespace tesh::bramel::platform
#endif
