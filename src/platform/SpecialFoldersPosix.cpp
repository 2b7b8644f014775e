// Shared data and documents where POSIX desktops keep them.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef _WIN32
#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>
#include <vector>

#include "platform/Files.h"
#include "platform/PluginBundle.h"
#include "platform/SpecialFolders.h"

namespace tesh::bramel::platform {
namespace {

namespace fs = std::filesystem;

/// Bytes: larger than any desktop's user-dirs.dirs.
constexpr std::uint64_t kLargestSetting = 1U << 16U;

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// The value of the variable `name`; if it is not set, the path `fallback` below the home folder, or empty if there is
/// no home folder.
std::string environmentOrHome(const char* name, const char* fallback) {
  const std::string value = environment(name);
  const std::string home = environment("HOME");
  return !value.empty() || home.empty() ? value : home + "/" + fallback;
}

/// The documents folder from the desktop's settings, a line such as XDG_DOCUMENTS_DIR="$HOME/Dokumente"; empty if there
/// is none.
std::string desktopDocuments() {
  const auto bytes = readWhole(environmentOrHome("XDG_CONFIG_HOME", ".config") + "/user-dirs.dirs", kLargestSetting);
  if (!bytes) {
    return {};
  }
  std::istringstream file(std::string(bytes->begin(), bytes->end()));
  const std::string key = "XDG_DOCUMENTS_DIR=\"";
  for (std::string line; std::getline(file, line);) {
    if (line.rfind(key, 0) != 0 || line.size() <= key.size() || line.back() != '"') {
      continue;
    }
    const std::string value = line.substr(key.size(), line.size() - key.size() - 1);
    const std::string homePrefix = "$HOME/";
    if (value.rfind(homePrefix, 0) == 0) {
      return environment("HOME") + "/" + value.substr(homePrefix.size());
    }
    return value.front() == '/' ? value : std::string();
  }
  return {};
}

/// The folders where installations put shared files; some entries may be empty.
std::vector<std::string> installedPlaces() {
  const std::string beside = moduleFolder();
  std::vector<std::string> folders{beside, folderAroundBundle(beside),
                                   environmentOrHome("XDG_DATA_HOME", ".local/share")};
  const std::string list = environment("XDG_DATA_DIRS");
  std::stringstream stream(list.empty() ? "/usr/local/share:/usr/share" : list);
  for (std::string folder; std::getline(stream, folder, ':');) {
    folders.push_back(folder);
  }
  return folders;
}

/// Empty if none of the folders holds content.
std::string firstWithContent(const std::vector<std::string>& folders) {
  for (const std::string& folder : folders) {
    std::error_code error;
    if (!folder.empty() && fs::is_directory(fs::path(folder) / "Tesh" / "Bramel", error)) {
      return folder;
    }
  }
  return {};
}

}  // namespace

std::string moduleFolder() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&moduleFolder), &info) == 0 || info.dli_fname == nullptr) {
    return {};
  }
  // For a program that was found in $PATH, dladdr gives its bare name.
  const std::string name = info.dli_fname;
  std::error_code error;
  const fs::path file = fs::canonical(name.find('/') == std::string::npos ? "/proc/self/exe" : name, error);
  return error ? std::string() : file.parent_path().string();
}

std::string ownContentFolder() {
  const std::string data = environmentOrHome("XDG_DATA_HOME", ".local/share");
  return data.empty() ? data : data + "/sivray/content";
}

std::vector<std::string> commonFilesPlaces() {
  if (std::string chosen = environment("BRAMEL_COMMON_FILES"); !chosen.empty()) {
    return {std::move(chosen)};
  }
  std::vector<std::string> folders = installedPlaces();
  folders.insert(folders.begin(), ownContentFolder());
  std::erase(folders, std::string());
  return folders;
}

std::string commonFilesFolder() {
  std::string chosen = environment("BRAMEL_COMMON_FILES");
  return chosen.empty() ? firstWithContent(commonFilesPlaces()) : chosen;
}

std::string installedFilesFolder() {
  std::string chosen = environment("BRAMEL_COMMON_FILES");
  return chosen.empty() ? firstWithContent(installedPlaces()) : chosen;
}

std::string documentsFolder() {
  for (const std::string& folder : {environment("BRAMEL_DOCUMENTS"), desktopDocuments()}) {
    if (!folder.empty()) {
      return folder;
    }
  }
  const std::string home = environment("HOME");
  return home.empty() ? home : home + "/Documents";
}

std::string settingsFolder() {
  const std::string chosen = environment("XDG_CONFIG_HOME");
  const std::string home = environment("HOME");
  if (chosen.starts_with('/')) {
    return chosen + "/sivray";
  }
  return home.empty() ? home : home + "/.config/sivray";
}

}  // namespace tesh::bramel::platform
#endif
