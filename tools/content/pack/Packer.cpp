// Turns each usable file of a folder into a wave.
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
#include "content/pack/Candidates.h"
#include "terminal/Printable.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

class Packer {
 public:
  Packer(PackRoom newRoom, const PackReport& target, fs::path leftOut)
      : report(target), room(std::move(newRoom)), outside(std::move(leftOut)) {}

  PackResult run(const fs::path& folder) {
    const std::vector<Candidate> candidates = candidatesIn(
        folder, RootName::tellsNothing,
        [this](const fs::path& path, const std::string& reason) { reject(path, reason); }, outside);
    std::size_t done = 0;
    for (const Candidate& candidate : candidates) {
      report.progress(static_cast<double>(done++) / static_cast<double>(candidates.size()));
      add(candidate);
    }
    report.progress(1.0);
    return std::move(result);
  }

 private:
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
