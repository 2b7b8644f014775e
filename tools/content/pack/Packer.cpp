// Walks through the category folders and turns each usable file into a wave.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/Packer.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "content/Files.h"
#include "content/library/LibraryWriter.h"
#include "content/pack/AudioFile.h"
#include "content/pack/WaveNames.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

/// A file to be packed.
struct Candidate {
  fs::path path;
  int category = 0;
};

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

std::optional<int> categoryOf(const std::string& folderName) {
  const auto* const found =
      std::ranges::find_if(kCategoryNames, [&](std::string_view name) { return equalsIgnoringCase(name, folderName); });
  if (found == kCategoryNames.end()) {
    return std::nullopt;
  }
  return static_cast<int>(found - kCategoryNames.begin());
}

std::string allCategories() {
  std::string names;
  for (const std::string_view name : kCategoryNames) {
    names += (names.empty() ? "" : ", ") + std::string(name);
  }
  return names;
}

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
    throw std::runtime_error(textOf(folder) + ": " + error.message());
  }
  std::ranges::sort(entries, {}, [](const fs::path& path) { return textOf(path); });
  return entries;
}

class Packer {
 public:
  explicit Packer(const PackReport& target) : report(target) {}

  PackResult run(const fs::path& folder) {
    const std::vector<Candidate> candidates = candidatesIn(folder);
    std::size_t done = 0;
    for (const Candidate& candidate : candidates) {
      report.progress(static_cast<double>(done++) / static_cast<double>(candidates.size()));
      add(candidate);
    }
    report.progress(1.0);
    return std::move(result);
  }

 private:
  std::vector<Candidate> candidatesIn(const fs::path& folder) {
    std::vector<Candidate> candidates;
    for (const fs::path& entry : entriesOf(folder)) {
      const auto category = categoryOf(textOf(entry.filename()));
      if (!fs::is_directory(entry)) {
        reject(entry, "lies in no category's folder");
      } else if (!category) {
        reject(entry, "is no category; the categories are " + allCategories());
      } else {
        addCandidates(candidates, entry, *category);
      }
    }
    std::ranges::stable_sort(candidates, {}, &Candidate::category);
    return candidates;
  }

  void addCandidates(std::vector<Candidate>& candidates, const fs::path& folder, int category) {
    for (const fs::path& path : entriesOf(folder)) {
      if (fs::is_regular_file(path)) {
        candidates.push_back({path, category});
      } else {
        reject(path, "is no file");
      }
    }
  }

  void add(const Candidate& candidate) {
    try {
      AudioFile file = readAudioFile(textOf(candidate.path));
      const std::uint64_t bytes = sampleBytesOf(file.wave);
      if (packedBytes + bytes > kMostSampleData) {
        throw std::runtime_error("is one too many: a sample library holds 2 GiB");
      }
      if (!file.note.empty()) {
        report.say(textOf(candidate.path) + ": " + file.note);
      }
      packedBytes += bytes;
      file.wave.category = candidate.category;
      file.wave.name = names.take(textOf(candidate.path.stem()));
      result.waves.push_back(std::move(file.wave));
    } catch (const std::runtime_error& error) {
      reject(candidate.path, error.what());
    }
  }

  void reject(const fs::path& path, const std::string& reason) {
    ++result.unusable;
    report.say(textOf(path) + ": " + reason);
  }

  const PackReport& report;
  PackResult result;
  WaveNames names;
  std::uint64_t packedBytes = 0;
};

}  // namespace

PackResult packFolder(const std::string& folder, const PackReport& report) {
  return Packer(report).run(pathOf(folder));
}

}  // namespace sivray::content
