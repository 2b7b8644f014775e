// Reads files on all cores, a few at a time, and numbers them in order.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/SoundAdder.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include "content/Files.h"
#include "content/Parallel.h"
#include "content/own/OwnChange.h"
#include "content/pack/AudioFile.h"
#include "content/pack/Candidates.h"
#include "content/pack/WaveNames.h"
#include "terminal/Interrupt.h"
#include "terminal/Printable.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

/// The most files whose samples are in memory at once.
constexpr std::size_t kFilesAtOnce = 32;

/// Chooses the number of each new sound.
class NumberPool {
 public:
  NumberPool(const Ledger& ledger, std::int32_t numbers) {
    std::set<std::int32_t> taken;
    for (const OwnSound& sound : ledger.sounds) {
      taken.insert(sound.number);
      if (sound.isRemoved()) {
        left.push_back(sound.number);
      }
    }
    for (std::int32_t number = 1; number < numbers; ++number) {
      if (number % kNumbersPerFactoryWave != 0 && !taken.contains(number)) {
        fresh.insert(number);
      }
    }
  }

  /// Takes the wished number if no sound ever had it, else the lowest such number. When all have been used, takes that
  /// of the sound that was removed first. Nothing if there is none.
  std::optional<std::int32_t> take(std::optional<std::int32_t> wish) {
    if (const auto found = wish ? fresh.find(*wish) : fresh.begin(); found != fresh.end()) {
      return fresh.extract(found).value();
    }
    if (!fresh.empty()) {
      return fresh.extract(fresh.begin()).value();
    }
    if (left.empty()) {
      return std::nullopt;
    }
    const std::int32_t number = left.front();
    left.erase(left.begin());
    return number;
  }

  /// A removed sound that is added again takes its old number.
  void takeBack(std::int32_t number) { std::erase(left, number); }

 private:
  std::set<std::int32_t> fresh;
  std::vector<std::int32_t> left;
};

struct ReadFile {
  std::optional<AudioFile> sound;
  std::string fault;
};

/// Calls `reportRead` on the calling thread, with the number of files that all threads have read by then.
std::vector<ReadFile> readAll(std::span<const Candidate> files, const std::function<void(std::size_t)>& reportRead) {
  std::vector<ReadFile> read(files.size());
  std::atomic<std::size_t> filesRead{0};
  const std::thread::id caller = std::this_thread::get_id();
  onAllCores(files.size(), [&] {
    return [&](std::size_t i) {
      if (InterruptWatch::hasArrived()) {
        return;
      }
      try {
        read[i].sound = readAudioFile(textOf(files[i].path));
      } catch (const std::exception& error) {
        read[i].fault = error.what();
      }
      const std::size_t reads = ++filesRead;
      if (std::this_thread::get_id() == caller) {
        reportRead(reads);
      }
    };
  });
  InterruptWatch::check();
  return read;
}

class SoundAdder {
 public:
  SoundAdder(OwnContent& own, const AddWish& wished, const AddReport& reporting)
      : content(own), wish(wished), report(reporting), next(own.ledger()), pool(next, own.tables().numbers()) {
    for (std::int32_t wave = 0; wave < own.tables().factoryWaves(); ++wave) {
      names.reserve(own.tables().factoryName(wave));
    }
    for (const OwnSound& sound : next.sounds) {
      if (!sound.isRemoved()) {
        names.reserve(sound.name);
      }
    }
  }

  std::size_t run() {
    findFiles();
    OwnChange change(content, OwnChange::Build::asNeeded);
    for (std::size_t from = 0; from < files.size(); from += kFilesAtOnce) {
      const std::span<const Candidate> some =
          std::span<const Candidate>(files).subspan(from, std::min(kFilesAtOnce, files.size() - from));
      const auto read = readAll(some, [&](std::size_t reads) { reportProgress(from + reads); });
      for (std::size_t i = 0; i < some.size(); ++i) {
        take(change, some[i], read[i]);
      }
      reportProgress(from + some.size());
    }
    report.progress(1.0);
    const bool isChanged = std::ranges::any_of(
        outcomes, [](const FileOutcome& outcome) { return outcome.kind == FileOutcome::Kind::added; });
    if (isChanged || isRecategorised) {
      change.commit(next);
    }
    std::ranges::for_each(outcomes, report.tell);
    return static_cast<std::size_t>(std::ranges::count_if(
        outcomes, [](const FileOutcome& outcome) { return outcome.kind != FileOutcome::Kind::unused; }));
  }

 private:
  /// The final 1 is reported by `run`.
  void reportProgress(std::size_t filesDone) const {
    if (filesDone < files.size()) {
      report.progress(static_cast<double>(filesDone) / static_cast<double>(files.size()));
    }
  }

  void findFiles() {
    for (const std::string& path : wish.paths) {
      std::error_code error;
      fs::path place = pathOf(path).lexically_normal();
      if (!place.has_filename()) {
        place = place.parent_path();
      }
      if (fs::is_directory(place, error)) {
        readWishes(place / kNumbersFile);
        try {
          std::ranges::move(candidatesIn(place, RootName::tellsCategory, rejecting(), content.paths().root),
                            std::back_inserter(files));
        } catch (const fs::filesystem_error& fault) {
          reject(place, "cannot be read: " + fault.code().message());
        }
      } else if (fs::is_regular_file(place, error)) {
        files.push_back(candidateOf(place));
        if (const auto told = wish.categories.find(path); told != wish.categories.end()) {
          files.back().category = told->second;
          files.back().isGuess = false;
        }
      } else {
        reject(place, fs::exists(place, error) ? "is no file" : "does not exist");
      }
    }
    std::erase_if(files, [](const Candidate& file) { return file.path.filename() == kNumbersFile; });
  }

  /// Reads the numbers of an exported song's sounds.
  void readWishes(const fs::path& list) {
    std::error_code error;
    if (fs::is_regular_file(list, error)) {
      for (const OwnSound& sound : readLedger(readText(textOf(list)), content.tables().factoryWaves()).ledger.sounds) {
        wishes.emplace(sound.hash, sound);
        // Another system may decode or convert a file with different rounding.
        const std::string ownName = sound.file.substr(std::min(sound.file.size(), ownFileStart(sound.number).size()));
        for (const std::string& name : {sound.file, ownName}) {
          fileWishes.emplace(textOf(list.parent_path() / pathOf(name)), sound);
        }
      }
    }
  }

  /// Returns null if no song's list names the sound.
  const OwnSound* wishFor(std::uint64_t hash, const fs::path& path) const {
    if (const auto byHash = wishes.find(hash); byHash != wishes.end()) {
      return &byHash->second;
    }
    const auto byFile = fileWishes.find(textOf(path));
    return byFile == fileWishes.end() ? nullptr : &byFile->second;
  }

  Rejection rejecting() {
    return [this](const fs::path& path, const std::string& reason) { reject(path, reason); };
  }

  void reject(const fs::path& path, const std::string& reason) {
    FileOutcome& outcome = outcomes.emplace_back();
    outcome.path = textOf(path);
    outcome.note = reason;
  }

  void take(OwnChange& change, const Candidate& file, const ReadFile& read) {
    if (!read.sound) {
      reject(file.path, read.fault);
      return;
    }
    const std::uint64_t hash = hashOf(read.sound->wave);
    const auto known = std::ranges::find(next.sounds, hash, &OwnSound::hash);
    if (known != next.sounds.end() && !known->isRemoved()) {
      if (wish.category && known->category != *wish.category) {
        known->category = *wish.category;
        isRecategorised = true;
      }
      outcomes.push_back({FileOutcome::Kind::known, textOf(file.path), *known, {}, false});
      return;
    }
    if (!change.hasRoomFor(read.sound->wave)) {
      reject(file.path, "is one too many: a sample library holds 2 GiB");
      return;
    }
    OwnSound sound;
    sound.hash = hash;
    const OwnSound* const wished = wishFor(hash, file.path);
    if (known != next.sounds.end()) {
      sound.number = known->number;
      pool.takeBack(sound.number);
    } else if (const auto number = pool.take(wished == nullptr ? std::nullopt : std::optional(wished->number))) {
      sound.number = *number;
    } else {
      reject(file.path, "is one too many: there are numbers for " + std::to_string(next.sounds.size()) + " own sounds");
      return;
    }
    std::string note = read.sound->note;
    if (wished != nullptr && wished->number != sound.number) {
      note += std::string(note.empty() ? "" : ", and ") + "has number " + std::to_string(wished->number) +
              " in the song, which is another sound's here";
    }
    sound.category = wish.category.value_or(wished == nullptr ? file.category : wished->category);
    sound.name = names.take(printable(wished == nullptr ? textOf(file.path.stem()) : wished->name));
    change.append(sound.number, read.sound->wave);
    sound.file = change.keepFile(sound.number, file.path);
    std::erase_if(next.sounds, [&sound](const OwnSound& old) { return old.number == sound.number; });
    next.sounds.push_back(sound);
    const bool isGuess = file.isGuess && !wish.category && wished == nullptr;
    outcomes.push_back({FileOutcome::Kind::added, textOf(file.path), sound, note, isGuess});
  }

  OwnContent& content;
  const AddWish& wish;
  const AddReport& report;
  Ledger next;
  NumberPool pool;
  WaveNames names;
  std::vector<Candidate> files;
  std::map<std::uint64_t, OwnSound> wishes;    ///< Wished numbers, by hash of the samples.
  std::map<std::string, OwnSound> fileWishes;  ///< Wished numbers, by path.
  std::vector<FileOutcome> outcomes;
  bool isRecategorised = false;
};

}  // namespace

std::size_t addSounds(OwnContent& content, const AddWish& wish, const AddReport& report) {
  return SoundAdder(content, wish, report).run();
}

}  // namespace sivray::content
