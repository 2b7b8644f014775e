// Reads the factory bank: a folder of kits, and the list that orders them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "content/factory/Kit.h"

namespace sivray::factory {

/// A kit with the file that it came from.
struct BankKit {
  std::string file;
  Kit kit;
};

/// Returns the kits of a folder in the order of its list "bank.txt", which names one kit per line (its file's name
/// without ".kit"). Throws TextError for a kit that is listed twice, has no file, is missing from the list, or shares
/// its name with another kit; std::runtime_error for a file that cannot be read.
std::vector<BankKit> readBank(const std::string& folder);

}  // namespace sivray::factory
