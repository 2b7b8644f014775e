// Program files: the user's own file, and exported files, which have another header before the same content.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "storage/programs/ProgramDatabase.h"

namespace tesh::vimo {

/// The image in a program file. `image` refers to the file's bytes. If the file is truncated, an image of an older
/// version is cut there; one of the newest version is refused.
struct UserProgramImage {
  std::uint32_t macroCount = 0;
  std::span<const std::uint8_t> image;
};

/// Reads a user program file of any version. Nothing if the file has less than 12 bytes, or is truncated inside an
/// image of the newest version.
std::optional<UserProgramImage> readUserProgramFile(std::span<const std::uint8_t> file);

/// Reads an exported file. Nothing if it is of another kind or instrument, or if readUserProgramFile refuses its
/// content.
std::optional<UserProgramImage> readExportedPrograms(std::span<const std::uint8_t> file, std::string_view instrument);

std::vector<std::uint8_t> makeUserProgramFile(const ProgramDatabase& database);
std::vector<std::uint8_t> makeExportedPrograms(const ProgramDatabase& database, std::string_view instrument);

}  // namespace tesh::vimo
