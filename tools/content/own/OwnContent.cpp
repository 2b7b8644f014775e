// Reads the folder and repairs it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnContent.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "content/Files.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMissingFile = "missing";

/// Returns the own file whose name begins with a number.
std::string fileOf(const OwnPaths& paths, std::int32_t number) {
  std::error_code error;
  for (fs::directory_iterator entry(paths.files, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = textOf(entry->path().filename());
    if (name.starts_with(ownFileStart(number))) {
      return name;
    }
  }
  return ownFileStart(number) + kMissingFile;
}

}  // namespace

std::string ownFileStart(std::int32_t number) {
  constexpr std::size_t kDigits = 4;
  const std::string digits = std::to_string(number);
  return std::string(kDigits - std::min(kDigits, digits.size()), '0') + digits + ' ';
}

IndexFiles readIndexFiles(const fs::path& library) {
  return {readFile(textOf(library / "sampleparam.bin")), readFile(textOf(library / "drumparam.bin")),
          readFile(textOf(library / "drumparam_category.bin"))};
}

OwnContent::OwnContent(Say say) : tell(std::move(say)), lock(places, tell) {
  mend();
  readTables();
  readList();
}

/// Completes or undoes the change of a program that was killed.
void OwnContent::mend() {
  std::error_code error;
  fs::remove_all(places.newTree, error);
  if (fs::remove(places.exchanging, error)) {
    fs::remove_all(places.tree, error);  // Old and new files are mixed in it; it is rebuilt from the user's files.
  }
  const fs::path aside = fs::path(places.tree) += ".old";
  if (!fs::exists(places.tree) && fs::exists(aside)) {
    fs::rename(aside, places.tree);
  }
  fs::remove_all(aside, error);
}

void OwnContent::readTables() {
  hasTree = fs::exists(places.tree);
  const fs::path library = hasTree ? places.library : OwnPaths::libraryIn(installedTree());
  if (!hasTree && (installedTree().empty() || !fs::exists(library))) {
    throw std::runtime_error("no factory content is installed, beside which your sounds could be");
  }
  onDisk = readIndexFiles(library);
  try {
    index.emplace(onDisk);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(textOf(library) + ": " + error.what() +
                             (hasTree ? ": move the folder Tesh away, and it is built anew" : ""));
  }
  if (hasTree != index->hasOwnNumbers()) {
    throw std::runtime_error(textOf(library) + (hasTree ? ": has no room for own sounds: move the folder Tesh away"
                                                        : ": is content with own sounds already"));
  }
}

void OwnContent::readList() {
  const bool exists = fs::exists(places.ledger);
  LedgerReading reading;
  if (exists) {
    reading = readLedger(readText(textOf(places.ledger)), index->factoryWaves());
  } else if (!index->listed().empty()) {
    reading.fault = "is missing";
  }
  list = std::move(reading.ledger);
  const OwnStretches all = index->stretches();
  if (!reading.fault.empty()) {
    for (OwnSound& sound : index->listed()) {
      const auto stretch = all.find(sound.number);
      const bool isNamed = std::ranges::any_of(list.sounds, [&sound](const OwnSound& other) {
        return other.number == sound.number || (!other.isRemoved() && other.name == sound.name);
      });
      if (!isNamed && stretch != all.end()) {
        sound.hash = hashOf(waveAt(stretch->second));
        sound.file = fileOf(places, sound.number);
        list.sounds.push_back(std::move(sound));
      }
    }
    if (exists) {
      fs::copy_file(places.ledger, fs::path(places.ledger) += ".broken", fs::copy_options::overwrite_existing);
    }
    tell(textOf(places.ledger) + ": " + reading.fault + ": it is made anew from the sounds that play" +
         (exists ? "; the old one is " + textOf(places.ledger) + ".broken" : ""));
    writeText(textOf(places.ledger), textOf(list));
  }
  for (const OwnSound& sound : list.sounds) {
    const auto stretch = all.find(sound.number);
    if (!sound.isRemoved() && stretch != all.end()) {
      known.insert(*stretch);
    }
    std::error_code error;
    if (!sound.isRemoved() && !fs::exists(places.files / pathOf(sound.file), error)) {
      fs::rename(places.files / pathOf(kUnlistedPrefix + sound.file), places.files / pathOf(sound.file), error);
    }
  }
  std::error_code error;
  for (fs::directory_iterator entry(places.files, error), end; !error && entry != end; entry.increment(error)) {
    if (textOf(entry->path().filename()).starts_with(kUnlistedPrefix)) {
      std::error_code ignored;
      fs::remove(entry->path(), ignored);
    }
  }
}

bool OwnContent::isOutdated() const {
  const fs::path tree = installedTree();
  return hasTree && !tree.empty() && fingerprintOf(tree) != list.factory;
}

bool OwnContent::needsBuilding() const {
  const auto sounds = std::ranges::count_if(list.sounds, [](const OwnSound& sound) { return !sound.isRemoved(); });
  return !hasTree || static_cast<std::size_t>(sounds) != known.size();
}

bool OwnContent::differs() const { return hasTree && !needsBuilding() && index->files(list, known) != onDisk; }

Wave OwnContent::waveAt(const OwnStretch& stretch) const {
  const fs::path library = hasTree ? places.library : OwnPaths::libraryIn(installedTree());
  std::ifstream data(library / "drumdata.bin", std::ios::binary);
  const auto side = [&](std::uint32_t start) {
    std::vector<char> bytes(2 * std::size_t{stretch.frames});
    data.seekg(2 * static_cast<std::streamoff>(start));
    if (!data.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
      throw std::runtime_error(textOf(library) + ": drumdata.bin is cut short");
    }
    std::vector<std::int16_t> samples;
    samples.reserve(stretch.frames);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
      samples.push_back(static_cast<std::int16_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                                  static_cast<unsigned char>(bytes[i + 1])));
    }
    return samples;
  };
  Wave wave;
  wave.sampleRate = static_cast<int>(stretch.rate);
  wave.left = side(stretch.left);
  if (stretch.isStereo()) {
    wave.right = side(stretch.right);
  }
  return wave;
}

}  // namespace sivray::content
