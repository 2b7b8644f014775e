// The folder or file for each key, and file access by path.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/paths/Paths.h"

#include "platform/Files.h"
#include "platform/SpecialFolders.h"

namespace tesh::bramel {
namespace {

bool isSeparator(char c) { return c == '/' || c == '\\'; }

std::string macroFolder(std::string_view name) { return pathBelow(pathBelow(sharedBase(), "Macro"), name); }

/// A file of the instrument's macro folder.
std::string macroFile(std::string_view name, std::string_view file) { return pathBelow(macroFolder(name), file); }

/// The user's file in `folder`. Creates `madeFolder`; an error there is reported later, when writing the file fails.
std::string userFile(const std::string& folder, const std::string& madeFolder, std::string_view name) {
  if (folder.empty()) {
    return {};
  }
  platform::createFolders(madeFolder);
  return joinPath(folder, std::string(name) + "_User.prog");
}

std::string userCCMap(std::string_view name) {
  const std::string maps = directoryFor(kBramelDirectory_UserCCMap);
  return userFile(pathBelow(maps, "User Programs"), maps, name);
}

std::string userPrograms(std::string_view name) {
  const std::string folder = directoryFor(kBramelDirectory_UserPrograms);
  return userFile(folder, folder, name);
}

}  // namespace

std::string sharedBase() { return pathBelow(platform::commonFilesFolder(), "Tesh\\Bramel"); }

std::string userBase() { return pathBelow(platform::documentsFolder(), "Tesh Bramel"); }

std::string directoryFor(std::string_view key) {
  if (key == kBramelDirectory_Documents) {
    return userBase();
  }
  if (key == kBramelDirectory_Resource) {
    return pathBelow(sharedBase(), "Resource");
  }
  if (key == kBramelDirectory_FactorySample) {
    return pathBelow(sharedBase(), "Factory Samples");
  }
  if (key == kBramelDirectory_UserPrograms) {
    return pathBelow(userBase(), "User Programs");
  }
  if (key == kBramelDirectory_UserSample) {
    return pathBelow(userBase(), "User Samples");
  }
  if (key == kBramelDirectory_UserCCMap) {
    return pathBelow(userBase(), "CC Maps");
  }
  return {};
}

std::string pathFor(std::string_view key, std::string_view name) {
  if (key == kBramelPath_Macro) {
    return macroFolder(name);
  }
  if (key == kBramelPath_FactoryTwoProgram) {
    return macroFile(name, "Factory2.prog");
  }
  if (key == kBramelPath_FactoryCCMap) {
    return macroFile(name, std::string(name) + ".ccmap");
  }
  if (key == kBramelPath_FactoryNativeMap) {
    return macroFile(name, std::string(name) + ".native_mode_map");
  }
  if (key == kBramelPath_UserProgram) {
    return userPrograms(name);
  }
  if (key == kBramelPath_UserCCMap) {
    return userCCMap(name);
  }
  if (key == kBramelPath_ActiveCCMap) {
    const std::string user = userCCMap(name);
    return fileExists(user) ? user : pathFor(kBramelPath_FactoryCCMap, name);
  }
  return {};
}

std::string joinPath(std::string_view base, std::string_view relative) {
  if (!relative.empty() && isSeparator(relative.front())) {
    relative.remove_prefix(1);
  }
  if (base.empty() || relative.empty()) {
    return std::string(base.empty() ? relative : base);
  }
  return platform::combinePath(std::string(base), std::string(relative));
}

std::string pathBelow(std::string_view folder, std::string_view relative) {
  return folder.empty() ? std::string() : joinPath(folder, relative);
}

bool fileExists(const std::string& path) { return !path.empty() && platform::exists(path); }

std::vector<std::uint8_t> readFile(const std::string& path) {
  return platform::readWhole(path).value_or(std::vector<std::uint8_t>());
}

bool writeFile(const std::string& path, const void* data, std::size_t size) {
  return platform::writeAtomically(path, {static_cast<const std::uint8_t*>(data), size});
}

bool chosenFileExists(const std::string& path) {
  return !path.empty() && platform::exists(platform::NativePath::chosen(path));
}

std::vector<std::uint8_t> readChosenFile(const std::string& path) {
  return platform::readWhole(platform::NativePath::chosen(path)).value_or(std::vector<std::uint8_t>());
}

bool writeChosenFile(const std::string& path, const void* data, std::size_t size) {
  return platform::writeAtomically(platform::NativePath::chosen(path), {static_cast<const std::uint8_t*>(data), size});
}

}  // namespace tesh::bramel
