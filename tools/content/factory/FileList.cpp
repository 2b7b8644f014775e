// Reads the list and compares it with the folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/factory/FileList.h"

#include <map>
#include <sstream>

#include "content/Files.h"
#include "content/factory/Kit.h"
#include "core/Text.h"

namespace sivray::factory {
namespace {

/// Returns a line of the list without comment and surrounding blanks.
std::string entryOf(const std::string& line) {
  return std::string(tesh::cofu::core::trimmed(std::string_view(line).substr(0, line.find('#'))));
}

}  // namespace

std::vector<std::string> readFileList(const std::string& folder, const std::string& list, std::string_view extension) {
  const std::string path = folder + "/" + list;
  std::map<std::string, std::string> unlisted;
  for (const std::string& file : content::filesIn(folder, extension)) {
    const std::string name = content::fileNameOf(file);
    unlisted[name.substr(0, name.size() - extension.size())] = file;
  }
  std::vector<std::string> files;
  std::istringstream lines(content::readText(path));
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    const std::string entry = entryOf(line);
    if (entry.empty()) {
      continue;
    }
    const auto found = unlisted.find(entry);
    if (found == unlisted.end()) {
      throw TextError(
          path, number,
          "there is no '" + entry + std::string(extension) + "' in this folder, or it stands twice in the list");
    }
    files.push_back(found->second);
    unlisted.erase(found);
  }
  if (!unlisted.empty()) {
    throw TextError(unlisted.begin()->second, 1, "the file does not stand in the list " + path);
  }
  return files;
}

}  // namespace sivray::factory
