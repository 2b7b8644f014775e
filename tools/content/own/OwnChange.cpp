// The order of the steps: after each of them, the files on disk are consistent.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/OwnChange.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "content/Files.h"
#include "content/library/LibraryWriter.h"
#include "content/own/OwnSimilar.h"
#include "content/pack/AudioFile.h"
#include "content/pack/WaveNames.h"
#include "core/LittleEndian.h"
#include "engine/ProgramBank.h"
#include "terminal/Interrupt.h"
#include "terminal/Printable.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
namespace engine = tesh::bramel::plugin::sivray;

/// The engine's start state names waves by number. It is optional in the content.
void spreadNumbers(const fs::path& chunkFile, std::int32_t factoryWaves) {
  if (!fs::exists(chunkFile)) {
    return;
  }
  std::vector<std::uint8_t> bytes = readFile(textOf(chunkFile));
  if (bytes.size() != sizeof(engine::ProgramBankImage)) {
    return;
  }
  const auto image = std::make_unique<engine::ProgramBankImage>();
  std::memcpy(image.get(), bytes.data(), bytes.size());
  const auto spread = [factoryWaves](engine::ProgramBankRecord& record) {
    for (auto& pad : record.pads) {
      pad[0] = std::min(pad[0], static_cast<std::uint32_t>(factoryWaves - 1)) * kNumbersPerFactoryWave;
    }
  };
  spread(image->editBuffer);
  std::ranges::for_each(image->programs, spread);
  std::memcpy(bytes.data(), image.get(), bytes.size());
  writeFile(textOf(chunkFile), bytes);
}

/// Writes the bytes unless the file already holds them.
void putBack(const fs::path& file, const std::vector<std::uint8_t>& bytes) {
  if (readFile(textOf(file)) != bytes) {
    writeFile(textOf(file), bytes);
  }
}

/// Returns the end of the last stretch of samples that a library's tables refer to, in bytes.
std::uint64_t usedBytesOf(const OwnTables& tables, const OwnStretches& stretches) {
  std::uint64_t end = 0;
  const auto take = [&end](const OwnStretch& stretch) {
    end = std::max(end, 2 * (std::uint64_t{std::max(stretch.left, stretch.right)} + stretch.frames));
  };
  for (std::int32_t wave = 0; wave < tables.factoryWaves(); ++wave) {
    take(tables.factoryStretch(wave));
  }
  for (const auto& [number, stretch] : stretches) {
    take(stretch);
  }
  return end;
}

}  // namespace

OwnChange::OwnChange(OwnContent& changed, Build build)
    : content(changed), isAnew(build == Build::anew || changed.needsBuilding() || changed.isOutdated()) {
  try {
    if (isAnew) {
      prepareTree();
    } else {
      library = content.places.library;
      index.emplace(content.onDisk);
      stretches = content.known;
      reopen();
    }
  } catch (...) {
    takeBack();
    throw;
  }
}

OwnChange::~OwnChange() {
  if (!isCommitted) {
    takeBack();
  }
}

void OwnChange::reopen() {
  const fs::path file = library / "drumdata.bin";
  data = GrowingFile::open(file);
  oldBytes = fs::file_size(file);
  usedBytes = usedBytesOf(*index, stretches);
}

void OwnChange::prepareTree() {
  const fs::path source = installedTree();
  if (source.empty()) {
    throw std::runtime_error("no factory content is installed, beside which your sounds could be");
  }
  library = OwnPaths::libraryIn(content.places.newTree);
  try {
    fs::copy(source, content.places.newTree, fs::copy_options::recursive);
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(textOf(content.places.newTree) + ": cannot be written: " + error.code().message());
  }
  index.emplace(readIndexFiles(library));
  if (index->hasOwnNumbers()) {
    throw std::runtime_error(textOf(source) + ": is content with own sounds already");
  }
  if (content.hasTree && index->factoryWaves() != content.index->factoryWaves()) {
    throw std::runtime_error(textOf(source) + ": has " + std::to_string(index->factoryWaves()) +
                             " waves, and your sounds have their numbers between " +
                             std::to_string(content.index->factoryWaves()));
  }
  spreadNumbers(content.places.newTree / "Bramel" / "Macro" / "Sivray" / "plugin_chunk.bin", index->factoryWaves());
  reopen();
  for (const OwnSound& sound : content.list.sounds) {
    InterruptWatch::check();
    const auto known = content.known.find(sound.number);
    if (known != content.known.end()) {
      append(sound.number, content.waveAt(known->second));
    } else if (!sound.isRemoved()) {
      try {
        append(sound.number, readAudioFile(textOf(content.places.files / pathOf(sound.file))).wave);
      } catch (const std::runtime_error& error) {
        content.tell(sound.file + ": it " + error.what() + "; a factory sound plays in the place of \"" + sound.name +
                     "\"");
      }
    }
  }
}

bool OwnChange::hasRoomFor(const Wave& wave) const { return usedBytes + sampleBytesOf(wave) <= kMostSampleData; }

void OwnChange::append(std::int32_t number, const Wave& wave) {
  std::vector<std::uint8_t> bytes;
  bytes.reserve(sampleBytesOf(wave));
  for (const auto* const side : {&wave.left, &wave.right}) {
    for (const std::int16_t sample : *side) {
      const auto bits = static_cast<std::uint16_t>(sample);
      bytes.push_back(static_cast<std::uint8_t>(bits >> 8));
      bytes.push_back(static_cast<std::uint8_t>(bits));
    }
  }
  data->writeAt(usedBytes, bytes);
  OwnStretch& stretch = stretches[number];
  stretch.left = static_cast<std::uint32_t>(usedBytes / 2);
  stretch.right = stretch.left + (wave.right.empty() ? 0 : static_cast<std::uint32_t>(wave.left.size()));
  stretch.frames = static_cast<std::uint32_t>(wave.left.size());
  stretch.rate = static_cast<std::uint32_t>(wave.sampleRate);
  usedBytes += bytes.size();
}

std::string OwnChange::keepFile(std::int32_t number, const fs::path& source) {
  constexpr std::size_t kLongestName = 200;  // Bytes; file systems take 255.
  constexpr std::size_t kLongestExtension = 16;
  const std::string extension = nameWithin(printable(textOf(source.extension())), kLongestExtension);
  const std::string stem = nameWithin(printable(textOf(source.stem())), kLongestName);
  std::string name = ownFileStart(number) + stem + extension;
  try {
    copies.push_back(name);
    fs::copy_file(source, content.places.files / pathOf(kUnlistedPrefix + name), fs::copy_options::overwrite_existing);
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(textOf(content.places.files) + ": cannot be written: " + error.code().message());
  }
  return name;
}

/// Turns sounds without samples into removed ones, which play a factory wave of their category.
void OwnChange::dropLost(Ledger& next) const {
  for (OwnSound& sound : next.sounds) {
    if (!sound.isRemoved() && !stretches.contains(sound.number)) {
      sound.file.clear();
      while (sound.standIn + 1 < index->factoryWaves() && index->factoryCategory(sound.standIn) != sound.category) {
        ++sound.standIn;
      }
      if (index->factoryCategory(sound.standIn) != sound.category) {
        sound.standIn = 0;
      }
    }
  }
}

void OwnChange::write(const fs::path& file, const std::vector<std::uint8_t>& bytes) { writeFile(textOf(file), bytes); }

void OwnChange::commit(Ledger next) {
  InterruptWatch::check();
  dropLost(next);
  if (isAnew) {
    next.factory = fingerprintOf(installedTree());
  }
  std::erase_if(stretches, [&next](const auto& entry) {
    const OwnSound* const sound = next.withNumber(entry.first);
    return sound == nullptr || sound->isRemoved();
  });
  data->flush();
  const std::uint64_t wanted = usedBytesOf(*index, stretches);
  if (isAnew) {
    data->cutTo(wanted);
    data.reset();  // Windows cannot move an open file.
    replaceTree(next);
  } else {
    amend(next);
    data->cutTo(wanted);  // An older table may still have referred to the samples behind the new end.
    data.reset();
  }
  isCommitted = true;
  showFiles(next);
  content.hasTree = true;
  content.onDisk = index->files(next, stretches);
  content.index.emplace(content.onDisk);
  content.known = stretches;
  content.list = std::move(next);
  try {
    writeOwnSimilar(content);
  } catch (const std::runtime_error& error) {
    content.tell(std::string(error.what()) + "; the panel finds no similar sounds until the next change");
  }
}

/// Order of writing: a table is written after those that its new entries refer to, and before those whose entries it
/// drops. Each sound has its own records, so both hold when the list of samples comes first and the browser's list
/// last.
void OwnChange::amend(const Ledger& next) {
  const IndexFiles made = index->files(next, stretches);
  // Samples that only the old tables refer to stay until the new tables are written.
  IndexFiles bridge = made;
  constexpr std::size_t kWord = 4;
  for (std::size_t i = 0; i + kWord <= bridge.samples.size(); i += kWord) {
    const bool isEmpty = std::all_of(bridge.samples.begin() + static_cast<std::ptrdiff_t>(i),
                                     bridge.samples.begin() + static_cast<std::ptrdiff_t>(i + kWord),
                                     [](std::uint8_t byte) { return byte == 0; });
    if (isEmpty) {
      std::copy_n(content.onDisk.samples.begin() + static_cast<std::ptrdiff_t>(i), kWord,
                  bridge.samples.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }
  const std::string oldList =
      fs::exists(content.places.ledger) ? readText(textOf(content.places.ledger)) : std::string();
  try {
    write(library / "sampleparam.bin", bridge.samples);
    write(library / "drumparam.bin", made.waves);
    writeText(textOf(content.places.ledger), textOf(next));
    write(library / "drumparam_category.bin", made.categories);
    if (bridge.samples != made.samples) {
      write(library / "sampleparam.bin", made.samples);
    }
  } catch (...) {
    std::error_code ignored;
    fs::resize_file(library / "drumdata.bin", oldBytes, ignored);  // Frees disk space for restoring the tables.
    try {
      putBack(library / "drumparam_category.bin", content.onDisk.categories);
      putBack(content.places.ledger, {oldList.begin(), oldList.end()});
      putBack(library / "drumparam.bin", content.onDisk.waves);
      putBack(library / "sampleparam.bin", content.onDisk.samples);
    } catch (const std::exception&) {
      content.tell("Not all could be taken back: start sivray-content refresh when there is room again");
    }
    throw;
  }
}

void OwnChange::replaceTree(const Ledger& next) {
  const IndexFiles made = index->files(next, stretches);
  write(library / "sampleparam.bin", made.samples);
  write(library / "drumparam.bin", made.waves);
  write(library / "drumparam_category.bin", made.categories);
  const bool hadList = fs::exists(content.places.ledger);
  const std::string oldList = hadList ? readText(textOf(content.places.ledger)) : std::string();
  writeText(textOf(content.places.ledger), textOf(next));
  try {
    exchange(content.places.tree, content.places.newTree, content.places.exchanging);
  } catch (const fs::filesystem_error& error) {
    std::error_code ignored;
    if (hadList) {
      writeText(textOf(content.places.ledger), oldList);
    } else {
      fs::remove(content.places.ledger, ignored);
    }
    throw std::runtime_error(textOf(content.places.tree) + ": cannot be replaced: " + error.code().message());
  }
  std::error_code ignored;
  fs::remove_all(content.places.newTree, ignored);
}

/// Renames new files to their final names, and deletes those of removed sounds.
void OwnChange::showFiles(const Ledger& next) {
  std::error_code ignored;
  for (const std::string& copy : copies) {
    fs::rename(content.places.files / pathOf(kUnlistedPrefix + copy), content.places.files / pathOf(copy), ignored);
  }
  for (const OwnSound& old : content.list.sounds) {
    const bool isKept =
        std::ranges::any_of(next.sounds, [&old](const OwnSound& sound) { return sound.file == old.file; });
    if (!old.isRemoved() && !isKept) {
      fs::remove(content.places.files / pathOf(old.file), ignored);
    }
  }
}

void OwnChange::takeBack() {
  std::error_code ignored;
  if (data != nullptr) {
    data.reset();
    if (!isAnew) {
      fs::resize_file(library / "drumdata.bin", oldBytes, ignored);
    }
  }
  if (isAnew) {
    fs::remove_all(content.places.newTree, ignored);
  }
  for (const std::string& copy : copies) {
    fs::remove(content.places.files / pathOf(kUnlistedPrefix + copy), ignored);
  }
}

}  // namespace sivray::content
