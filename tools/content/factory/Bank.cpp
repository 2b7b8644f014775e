// Reads bank.txt and the kits that it lists.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/Bank.h"

#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "content/Files.h"

namespace sivray::factory {
namespace {

/// Returns a line of the list without comment and surrounding blanks.
std::string entryOf(const std::string& line) {
  const std::string_view text = std::string_view(line).substr(0, line.find('#'));
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) {
    return {};
  }
  return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

}  // namespace

std::vector<BankKit> readBank(const std::string& folder) {
  const std::string list = folder + "/bank.txt";
  std::map<std::string, std::string> unlisted;
  for (const std::string& path : content::filesIn(folder, ".kit")) {
    const std::string name = content::fileNameOf(path);
    unlisted[name.substr(0, name.size() - std::string_view(".kit").size())] = path;
  }

  std::vector<BankKit> bank;
  std::set<std::string> names;
  std::istringstream lines(content::readText(list));
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    const std::string entry = entryOf(line);
    if (entry.empty()) {
      continue;
    }
    const auto found = unlisted.find(entry);
    if (found == unlisted.end()) {
      throw TextError(list, number, "there is no kit '" + entry + "' in this folder, or it stands twice in the list");
    }
    bank.push_back({found->second, parseKit(content::readText(found->second), found->second)});
    if (!names.insert(bank.back().kit.name).second) {
      throw TextError(found->second, 1, "another kit is called '" + bank.back().kit.name + "' as well");
    }
    unlisted.erase(found);
  }
  if (!unlisted.empty()) {
    throw TextError(unlisted.begin()->second, 1, "the kit does not stand in the list " + list);
  }
  return bank;
}

}  // namespace sivray::factory
