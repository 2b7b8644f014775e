// Walks through the folders, tells each file's category, and turns each usable file into a wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/Packer.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "content/Files.h"
#include "content/library/LibraryWriter.h"
#include "content/pack/AudioFile.h"
#include "content/pack/Categories.h"
#include "terminal/Printable.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

/// A file to be packed.
struct Candidate {
  fs::path path;
  int category = 0;
  bool isGuess = false;  ///< No name told the category.
};

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

class Packer {
 public:
  Packer(PackRoom newRoom, const PackReport& target, fs::path leftOut)
      : report(target), room(std::move(newRoom)), outside(std::move(leftOut)) {}

  PackResult run(const fs::path& folder) {
    addCandidates(entriesOf(folder), std::nullopt);
    std::ranges::stable_sort(candidates, {}, &Candidate::category);
    std::size_t done = 0;
    for (const Candidate& candidate : candidates) {
      report.progress(static_cast<double>(done++) / static_cast<double>(candidates.size()));
      add(candidate);
    }
    report.progress(1.0);
    return std::move(result);
  }

 private:
  /// `above` is what the nearest folder with a category says.
  void addCandidates(const std::vector<fs::path>& entries, std::optional<CategoryMatch> above) {
    std::vector<fs::path> files;
    std::vector<fs::path> folders;
    for (const fs::path& entry : entries) {
      std::error_code error;
      if (fs::is_directory(entry, error)) {
        // A link may lead back to where it lies.
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
      addCandidate(file, isMixed ? std::nullopt : above);
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

  /// Files of three categories side by side: their names tell more than the folder's.
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

  void addCandidate(const fs::path& file, std::optional<CategoryMatch> folder) {
    const std::string name = textOf(file.stem());
    auto match = folder;
    if (!folder) {
      match = categoryIn(name);
    } else if (!folder->isSure) {  // The file may tell whether the folder's hat is open.
      match = categoryIn("hat " + name);
    }
    candidates.push_back({file, match ? match->category : kPercussion, !match});
  }

  void add(const Candidate& candidate) {
    try {
      AudioFile file = readAudioFile(textOf(candidate.path));
      const std::uint64_t bytes = sampleBytesOf(file.wave);
      if (room.bytes + bytes > kMostSampleData) {
        throw std::runtime_error("is one too many: a sample library holds 2 GiB");
      }
      room.bytes += bytes;
      file.wave.category = candidate.category;
      file.wave.name = room.names.take(printable(textOf(candidate.path.stem())));
      report.say(textOf(candidate.path) + ": " +
                 std::string(kCategoryNames[static_cast<std::size_t>(candidate.category)]) + " \"" + file.wave.name +
                 "\"" + (candidate.isGuess ? ", since neither its name nor its folder's names a category" : "") +
                 (file.note.empty() ? "" : "; it " + file.note));
      result.waves.push_back({std::move(file.wave), candidate.path.parent_path()});
    } catch (const std::runtime_error& error) {
      reject(candidate.path, error.what());
    }
  }

  void reject(const fs::path& path, const std::string& reason) {
    ++result.unusable;
    report.say(textOf(path) + ": not used: it " + reason);
  }

  const PackReport& report;
  PackRoom room;
  fs::path outside;
  std::vector<Candidate> candidates;
  PackResult result;
};

}  // namespace

PackResult packFolder(const std::string& folder, PackRoom room, const PackReport& report, const std::string& leftOut) {
  try {
    return Packer(std::move(room), report, pathOf(leftOut)).run(pathOf(folder));
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(folder + ": " + error.code().message());
  }
}

}  // namespace sivray::content
