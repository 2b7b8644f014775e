// Dated copies of the user's program file, beside it: how the file was before a change that takes something away. Any
// thread but the audio thread; files are waited for.
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

/// Older copies are deleted.
inline constexpr std::size_t kMostProgramFileCopies = 10;

CopyTime copyTimeNow();

/// Copies `file` as it is on the disk. A file that is missing needs no copy, nor does one with the bytes of the newest
/// copy. False if the copy could not be written.
bool keepProgramFileCopy(const std::string& file, CopyTime now);

/// The copies of `file`, the newest first.
std::vector<ProgramFileCopy> programFileCopies(const std::string& file);

/// Puts a copy in the place of `file`, of which it keeps a copy first. False, with `file` unchanged, if the copy cannot
/// be read or `file` not be written.
bool restoreProgramFileCopy(const std::string& file, const ProgramFileCopy& copy, CopyTime now);

}  // namespace tesh::vimo
