// Finds the files in a user's folder that may be sounds, and determines each one's category from names.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace sivray::content {

/// A file to be read.
struct Candidate {
  std::filesystem::path path;
  int category = 0;      ///< Index into kCategoryNames.
  bool isGuess = false;  ///< No name told the category, so it is a guess.
};

/// Receives a path that cannot be read, and the reason, for example "cannot be read: Permission denied".
using Rejection = std::function<void(const std::filesystem::path&, const std::string& reason)>;

/// Whether the name of the root `folder` may determine the category of the files in it.
enum class RootName : bool { tellsNothing, tellsCategory };

/// Returns the files in a folder and its sub-folders, ordered by category, folder and name. Skips hidden files, links
/// to folders, and the folder `leftOut` if given. A file's category is that of the nearest folder that names one, or of
/// its own name where a folder holds several categories; else percussion. Throws std::filesystem::filesystem_error when
/// `folder` cannot be read; unreadable folders below it are rejected.
std::vector<Candidate> candidatesIn(const std::filesystem::path& folder, RootName root, const Rejection& reject,
                                    const std::filesystem::path& leftOut = {});

/// Returns one file with the category from its folder's name and its own, as above.
Candidate candidateOf(const std::filesystem::path& file);

}  // namespace sivray::content
