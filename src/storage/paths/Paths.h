// The paths of all files that the instrument reads or writes, by string keys. Paths are UTF-8 with a backslash as
// separator on every operating system; the platform layer replaces it by the system's own. Any thread but the audio
// thread, because these functions wait for files.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tesh::bramel {

inline constexpr std::string_view kBramelDirectory_Documents = "kBramelDirectory_Documents";
inline constexpr std::string_view kBramelDirectory_Library = "kBramelDirectory_Library";
inline constexpr std::string_view kBramelDirectory_Resource = "kBramelDirectory_Resource";
inline constexpr std::string_view kBramelDirectory_FactorySample = "kBramelDirectory_FactorySample";
inline constexpr std::string_view kBramelDirectory_Projects = "kBramelDirectory_Projects";
inline constexpr std::string_view kBramelDirectory_EditBuffer = "kBramelDirectory_EditBuffer";
inline constexpr std::string_view kBramelDirectory_UserPrograms = "kBramelDirectory_UserPrograms";
inline constexpr std::string_view kBramelDirectory_UserSample = "kBramelDirectory_UserSample";
inline constexpr std::string_view kBramelDirectory_UserCCMap = "kBramelDirectory_UserCCMap";

inline constexpr std::string_view kBramelPath_Macro = "kBramelPath_Macro";
inline constexpr std::string_view kBramelPath_FactoryTwoProgram = "kBramelPath_FactoryTwoProgram";
inline constexpr std::string_view kBramelPath_FactoryCCMap = "kBramelPath_FactoryCCMap";
inline constexpr std::string_view kBramelPath_FactoryNativeMap = "kBramelPath_FactoryNativeMap";
inline constexpr std::string_view kBramelPath_UserProgram = "kBramelPath_UserProgram";
inline constexpr std::string_view kBramelPath_UserCCMap = "kBramelPath_UserCCMap";
inline constexpr std::string_view kBramelPath_ActiveCCMap = "kBramelPath_ActiveCCMap";

/// The read-only folder that is installed with the product; empty if the system has no place for it.
std::string sharedBase();

/// The user's folder in the documents; empty if there is no documents folder.
std::string userBase();

/// The folder of a kBramelDirectory_* key; empty for an unknown key, and for Library, Projects and EditBuffer, which
/// have no folder.
std::string directoryFor(std::string_view key);

/// The file of a kBramelPath_* key for the instrument `name`; empty for an unknown key. Keys of user files also create
/// the folder of the file.
std::string pathFor(std::string_view key, std::string_view name);

/// Joins two paths with one separator. A separator at the start of `relative` is dropped. If one path is empty, the
/// result is the other.
std::string joinPath(std::string_view base, std::string_view relative);

/// As joinPath, but empty if `folder` is empty, because the result would be relative to the host's working folder.
std::string pathBelow(std::string_view folder, std::string_view relative);

bool fileExists(const std::string& path);

/// The whole file. Empty if it cannot be read, is not a regular file, or is larger than 64 MiB. Never waits for another
/// process.
std::vector<std::uint8_t> readFile(const std::string& path);

/// Replaces the file in one step, or creates it. Follows a symbolic link and keeps the old file's permissions. False on
/// failure, which leaves the old file unchanged.
bool writeFile(const std::string& path, const void* data, std::size_t size);

/// As above, for a path from a file dialog, in which a backslash may be part of a name.
bool chosenFileExists(const std::string& path);
std::vector<std::uint8_t> readChosenFile(const std::string& path);
bool writeChosenFile(const std::string& path, const void* data, std::size_t size);

}  // namespace tesh::bramel
