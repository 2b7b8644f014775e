// Finds the files of a user's folder that may be sounds, and tells the category of each by its names.
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
  bool isGuess = false;  ///< No name told the category.
};

/// Receives what cannot be read, and why, as "cannot be read: Permission denied".
using Rejection = std::function<void(const std::filesystem::path&, const std::string& reason)>;

/// Whether the name of `folder` itself may tell the category of what is in it.
enum class RootName : bool { tellsNothing, tellsCategory };

/// Returns the files of a folder of any depth, by category and then by folder and name; hidden ones and links to
/// folders are passed over, as is the folder `leftOut`, if there is one. A file's category is that of the nearest
/// folder that names one, or what its own name says where a folder holds several; else it is a percussion. Throws
/// std::filesystem::filesystem_error when `folder` cannot be read; one below it is rejected.
std::vector<Candidate> candidatesIn(const std::filesystem::path& folder, RootName root, const Rejection& reject,
                                    const std::filesystem::path& leftOut = {});

/// Returns one file with what its folder's name and its own tell, as above.
Candidate candidateOf(const std::filesystem::path& file);

}  // namespace sivray::content
