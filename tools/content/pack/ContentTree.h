// A whole folder of content in the form that the plug-in reads: sample library, kits, and the pages of the manual.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "content/factory/Bank.h"
#include "content/library/Wave.h"

namespace sivray::content {

/// The contents of an installed tree. The files of its kits are optional.
struct ContentTree {
  std::vector<Wave> waves;  ///< By wave number.
  std::vector<factory::BankKit> kits;
};

/// Reads the content that the plug-in would load: below $BRAMEL_COMMON_FILES if set, else the installed one. Throws
/// std::runtime_error naming the file that is missing or broken.
ContentTree readInstalledTree();

/// Writes the tree below `target`, which can then be used as $BRAMEL_COMMON_FILES, and sets the levels of its kits from
/// index `firstNew` on by measuring their loudness. Copies the manual's pages from the installed content if it has
/// them. `tree` must have at least one wave and one kit. Sets $BRAMEL_COMMON_FILES of this process. Throws
/// std::runtime_error naming the file that could not be written. `progress` receives the progress, 0 to 1.
void writeTree(const std::string& target, ContentTree tree, std::size_t firstNew,
               const std::function<void(double)>& progress);

}  // namespace sivray::content
