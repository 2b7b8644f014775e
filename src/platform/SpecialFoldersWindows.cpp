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

/// The folders where installations put shared files; some entries may be empty.
std::vector<std::string> installedPlaces() {
  const std::string beside = moduleFolder();
  const std::string users = systemFolder(CSIDL_LOCAL_APPDATA);
  return {beside, folderAroundBundle(beside), users.empty() ? users : users + "\\Programs\\Common",
          systemFolder(CSIDL_PROGRAM_FILES_COMMON)};
}

/// If no folder holds content, the folder of common program files.
std::string firstWithContent(const std::vector<std::string>& folders) {
  for (const std::string& folder : folders) {
    if (!folder.empty() && PathIsDirectoryW(toWide(folder + "\\Tesh\\Bramel").c_str()) != FALSE) {
      return folder;
    }
  }
  return systemFolder(CSIDL_PROGRAM_FILES_COMMON);
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

std::string ownContentFolder() {
  const std::string users = systemFolder(CSIDL_LOCAL_APPDATA);
  return users.empty() ? users : users + "\\sivray\\content";
}

std::vector<std::string> commonFilesPlaces() {
  if (std::string chosen = environment(L"BRAMEL_COMMON_FILES"); !chosen.empty()) {
    return {std::move(chosen)};
  }
  std::vector<std::string> folders = installedPlaces();
  folders.insert(folders.begin(), ownContentFolder());
  std::erase(folders, std::string());
  return folders;
}

std::string commonFilesFolder() {
  std::string chosen = environment(L"BRAMEL_COMMON_FILES");
  return chosen.empty() ? firstWithContent(commonFilesPlaces()) : chosen;
}

std::string installedFilesFolder() {
  std::string chosen = environment(L"BRAMEL_COMMON_FILES");
  return chosen.empty() ? firstWithContent(installedPlaces()) : chosen;
}

std::string documentsFolder() {
  const std::string chosen = environment(L"BRAMEL_DOCUMENTS");
  return chosen.empty() ? systemFolder(CSIDL_PERSONAL) : chosen;
}

std::string settingsFolder() {
  const std::string data = systemFolder(CSIDL_APPDATA);
  return data.empty() ? data : data + "\\Sivray";
}

}  // namespace tesh::bramel::platform
#endif
