// A whole folder of content, as the plug-in takes it: sample library, kits, and the pages of the manual.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "content/factory/Bank.h"
#include "content/library/Wave.h"

namespace sivray::content {

/// What an installed tree holds. Its kits' files need not exist.
struct ContentTree {
  std::vector<Wave> waves;  ///< By number.
  std::vector<factory::BankKit> kits;
};

/// Reads the content that the plug-in would load: below $BRAMEL_COMMON_FILES, else the installed one. Throws
/// std::runtime_error naming what is missing or broken.
ContentTree readInstalledTree();

/// Writes the tree below `target`, which may then be $BRAMEL_COMMON_FILES, and sets the levels of its kits from
/// `firstNew` on by what they sound like. The manual's pages are copied from the installed content if it has them.
/// `tree` has at least one wave and one kit. Throws std::runtime_error naming the file that could not be written.
/// `progress` hears from 0 to 1 how much is done.
void writeTree(const std::string& target, ContentTree tree, std::size_t firstNew,
               const std::function<void(double)>& progress);

}  // namespace sivray::content
