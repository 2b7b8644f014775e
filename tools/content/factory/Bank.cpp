// Reads the kits that bank.txt lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/Bank.h"

#include <set>

#include "content/Files.h"
#include "content/factory/FileList.h"

namespace sivray::factory {

std::vector<BankKit> readBank(const std::string& folder) {
  std::vector<BankKit> bank;
  std::set<std::string> names;
  for (const std::string& file : readFileList(folder, "bank.txt", ".kit")) {
    bank.push_back({file, parseKit(content::readText(file), file)});
    if (!names.insert(bank.back().kit.name).second) {
      throw TextError(file, 1, "another kit is called '" + bank.back().kit.name + "' as well");
    }
  }
  return bank;
}

}  // namespace sivray::factory
