// Where every file lies that the instrument reads or writes: string keys in, paths out. Paths are UTF-8 and their
// separator is a backslash on every system; the platform layer turns it into the system's own.
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

/// The read-only tree that is installed with the product; empty when the system has no place for it.
std::string sharedBase();

/// The user's own tree below the documents.
std::string userBase();

/// The folder of a kBramelDirectory_* key; empty for keys without a folder and unknown keys.
std::string directoryFor(std::string_view key);

/// The file of a kBramelPath_* key for the instrument `name`; empty for unknown keys. The keys of user files make the
/// file's folder.
std::string pathFor(std::string_view key, std::string_view name);

/// `base` and `relative` with one separator between them; one that `relative` begins with is dropped. An empty part
/// gives the other.
std::string joinPath(std::string_view base, std::string_view relative);

bool fileExists(const std::string& path);

/// The whole file; empty if it cannot be read, is no regular file, or is larger than 64 MiB. Never waits for another
/// process. Must not be called with a lock held that the audio thread takes.
std::vector<std::uint8_t> readFile(const std::string& path);

/// Replaces the file as a whole, through a symbolic link and with its permissions: a failure leaves the old one as it
/// was and gives false. Must not be called with a lock held that the audio thread takes.
bool writeFile(const std::string& path, const void* data, std::size_t size);

/// `readFile` and `writeFile` for a path from a file dialog, where a backslash may belong to a name.
std::vector<std::uint8_t> readChosenFile(const std::string& path);
bool writeChosenFile(const std::string& path, const void* data, std::size_t size);

}  // namespace tesh::bramel
