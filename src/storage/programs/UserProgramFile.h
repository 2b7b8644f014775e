// Files that hold a bank of programs: the user's own file, and exported files, which have a header before its bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "storage/programs/ProgramDatabase.h"

namespace tesh::vimo {

/// The bank inside a program file. `image` refers to the bytes that were read. One of an older version is shorter than
/// the file says where the file ends before; one of the newest is whole.
struct UserProgramImage {
  std::uint32_t macroCount = 0;
  std::span<const std::uint8_t> image;
};

/// Reads the head of a user program file of any version; nothing when the file is shorter than its head, or than its
/// image of the newest version.
std::optional<UserProgramImage> readUserProgramFile(std::span<const std::uint8_t> file);

/// The same for an exported file; nothing for another kind of file or one of another instrument.
std::optional<UserProgramImage> readExportedPrograms(std::span<const std::uint8_t> file, std::string_view instrument);

std::vector<std::uint8_t> makeUserProgramFile(const ProgramDatabase& database);
std::vector<std::uint8_t> makeExportedPrograms(const ProgramDatabase& database, std::string_view instrument);

}  // namespace tesh::vimo
