// Lists folders and reads the categories from names.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/Candidates.h"

#include <algorithm>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "content/Files.h"
#include "content/library/Wave.h"
#include "content/pack/Categories.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

constexpr int kPercussion = 7;
static_assert(kCategoryNames[kPercussion] == "Perc");

/// Returns a folder's entries sorted by name, without hidden ones.
std::vector<fs::path> entriesOf(const fs::path& folder) {
  std::error_code error;
  std::vector<fs::path> entries;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (!textOf(entry->path().filename()).starts_with('.')) {
      entries.push_back(entry->path());
    }
  }
  if (error) {
    throw fs::filesystem_error("cannot be read", folder, error);
  }
  std::ranges::sort(entries, {}, [](const fs::path& path) { return textOf(path); });
  return entries;
}

Candidate judged(const fs::path& file, std::optional<CategoryMatch> folder) {
  const std::string name = textOf(file.stem());
  auto match = folder;
  if (!folder) {
    match = categoryIn(name);
  } else if (!folder->isSure) {  // The file's name may tell whether the hat is open.
    match = categoryIn("hat " + name);
  }
  return {file, match ? match->category : kPercussion, !match};
}

class Walk {
 public:
  Walk(const Rejection& rejection, fs::path leftOut) : reject(rejection), outside(std::move(leftOut)) {}

  /// `above` is the category of the nearest folder above that names one.
  void addCandidates(const std::vector<fs::path>& entries, std::optional<CategoryMatch> above) {
    std::vector<fs::path> files;
    std::vector<fs::path> folders;
    for (const fs::path& entry : entries) {
      std::error_code error;
      if (fs::is_directory(entry, error)) {
        // A link may lead to a folder above it.
        if (!fs::is_symlink(entry, error) && !fs::equivalent(entry, outside, error)) {
          folders.push_back(entry);
        }
      } else if (fs::is_regular_file(entry, error)) {
        files.push_back(entry);
      } else {
        reject(entry, "is no file");
      }
    }
    const bool isMixed = holdsAKit(files);
    for (const fs::path& file : files) {
      found.push_back(judged(file, isMixed ? std::nullopt : above));
    }
    for (const fs::path& inner : folders) {
      const auto own = categoryIn(textOf(inner.filename()));
      addFolder(inner, own ? own : above);
    }
  }

  void addFolder(const fs::path& folder, std::optional<CategoryMatch> above) {
    std::vector<fs::path> entries;
    try {
      entries = entriesOf(folder);
    } catch (const fs::filesystem_error& error) {
      reject(folder, "cannot be read: " + error.code().message());
      return;
    }
    addCandidates(entries, above);
  }

  /// Whether a folder holds files of at least three categories; then their names decide, not the folder's.
  static bool holdsAKit(const std::vector<fs::path>& files) {
    constexpr std::size_t kCategoriesOfAKit = 3;
    std::set<int> categories;
    for (const fs::path& file : files) {
      if (const auto match = categoryIn(textOf(file.stem()))) {
        categories.insert(match->category);
      }
    }
    return categories.size() >= kCategoriesOfAKit;
  }

  std::vector<Candidate> found;

 private:
  const Rejection& reject;
  fs::path outside;
};

}  // namespace

std::vector<Candidate> candidatesIn(const fs::path& folder, RootName root, const Rejection& reject,
                                    const fs::path& leftOut) {
  Walk walk(reject, leftOut);
  const bool isTold = root == RootName::tellsCategory;
  walk.addCandidates(entriesOf(folder), isTold ? categoryIn(textOf(folder.filename())) : std::nullopt);
  std::ranges::stable_sort(walk.found, {}, &Candidate::category);
  return std::move(walk.found);
}

Candidate candidateOf(const fs::path& file) {
  return judged(file, categoryIn(textOf(fs::absolute(file).parent_path().filename())));
}

}  // namespace sivray::content
