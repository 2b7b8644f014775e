// Finds changes that other instances have made to the user's programs. Each instance keeps the whole list in memory and
// overwrites the file with it, so it first merges what has changed in the file since it last read or wrote it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "storage/programs/ProgramDatabase.h"
#include "storage/programs/ProgramShelf.h"
#include "storage/programs/UserProgramFile.h"

namespace tesh::vimo {

/// Hashes of the programs in a list, over everything that they store except their ids, which are new after each
/// loading. Sorted; equal programs have one entry each.
using ProgramPrints = std::vector<std::uint64_t>;

ProgramPrints printsOf(const ProgramDatabase& database);

/// The programs of a user program file, fitted to the shelf's macros. Null if there is no file or it has no list in the
/// format that instances write. No lock is needed.
std::unique_ptr<ProgramDatabase> readProgramsOfOthers(const std::optional<UserProgramImage>& file,
                                                      const ProgramShelf& shelf);

/// For each program of `ours`, whether it was in the file at the time of `known` and no longer is.
std::vector<bool> findGone(const ProgramPrints& known, const ProgramDatabase& ours, const ProgramDatabase& inFile);

/// Removes from `inFile` all programs that were in the file at the time of `known`.
void keepNew(const ProgramPrints& known, ProgramDatabase& inFile);

}  // namespace tesh::vimo
