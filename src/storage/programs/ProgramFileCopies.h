// Dated copies of the user's program file, beside it, made before changes that remove something. Any thread but the
// audio thread, because these functions wait for files.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tesh::vimo {

/// Milliseconds since 1970.
using CopyTime = std::int64_t;

struct ProgramFileCopy {
  std::string path;
  CopyTime time = 0;
};

/// The number of copies that are kept; older ones are deleted.
inline constexpr std::size_t kMostProgramFileCopies = 10;

CopyTime copyTimeNow();

/// Copies `file` as it is on disk. No copy is needed for a missing file, or if the newest copy has the same bytes.
/// False if the copy could not be written.
bool keepProgramFileCopy(const std::string& file, CopyTime now);

/// The copies of `file`, the newest first.
std::vector<ProgramFileCopy> programFileCopies(const std::string& file);

/// Replaces `file` by a copy, after keeping a copy of `file`. False, with `file` unchanged, if the copy cannot be read
/// or `file` cannot be written.
bool restoreProgramFileCopy(const std::string& file, const ProgramFileCopy& copy, CopyTime now);

}  // namespace tesh::vimo
