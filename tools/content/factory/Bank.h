// The factory bank as text: a folder of kits, and the list that puts them in order.
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

/// The kits of a folder in the order of its list "bank.txt", which holds a line a kit: its file's name without ".kit".
/// Throws TextError for a kit that is listed but not there, stands twice, lies in the folder without being listed or
/// has the name of another, and std::runtime_error for a file that cannot be read.
std::vector<BankKit> readBank(const std::string& folder);

}  // namespace sivray::factory
