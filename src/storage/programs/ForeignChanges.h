// What other instances have done to the user's programs: each instance keeps the whole list in memory and writes it
// over the file, so that it first takes over what has changed in the file since it last read or wrote it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "storage/programs/ProgramDatabase.h"
#include "storage/programs/ProgramShelf.h"

namespace tesh::vimo {

/// The programs that a list holds, told apart by all that they store but their ids, of which loading makes new ones.
/// Sorted; equal programs count each.
using ProgramPrints = std::vector<std::uint64_t>;

ProgramPrints printsOf(const ProgramDatabase& database);

/// The programs of a user program file, fitted to the shelf's macros. Null if the file has no list in the form that
/// instances write. No lock is needed.
std::unique_ptr<ProgramDatabase> readProgramsOfOthers(std::span<const std::uint8_t> file, const ProgramShelf& shelf);

/// For each program of `ours`, whether the file held it when it was `known` and no longer does.
std::vector<bool> findGone(const ProgramPrints& known, const ProgramDatabase& ours, const ProgramDatabase& inFile);

/// Leaves in `inFile` only programs that the file did not hold when it was `known`.
void keepNew(const ProgramPrints& known, ProgramDatabase& inFile);

}  // namespace tesh::vimo
