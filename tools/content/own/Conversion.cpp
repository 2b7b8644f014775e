// Writes the packed waves as files, adds them as own sounds, and replaces values in the file's bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/own/Conversion.h"

#include <algorithm>
#include <bit>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <system_error>

#include "content/Files.h"
#include "content/library/LibraryReader.h"
#include "core/LittleEndian.h"
#include "macro/MacroChunkFormat.h"
#include "storage/programs/ProgramDatabase.h"
#include "storage/programs/ProgramRecord.h"
#include "storage/state/EditBufferRecord.h"
#include "storage/state/StateContent.h"
#include "viewmodels/texts/PanelMacros.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;
namespace panel = tesh::bramel::panel;
namespace state = tesh::bramel::vst;
namespace vimo = tesh::vimo;
using tesh::bramel::normaliseState;
using tesh::bramel::quantizeValue;
using tesh::cofu::core::ByteReader;
using tesh::cofu::core::ByteWriter;

constexpr std::size_t kMacrosWithSamples = panel::kPads * panel::kMacrosPerPad;

/// Writes a 16-bit WAV file.
void writeWave(const Wave& wave, const fs::path& file) {
  constexpr std::uint32_t kHeadBytes = 36;
  constexpr std::uint32_t kFormatBytes = 16;
  constexpr std::uint32_t kWholeNumbers = 1;
  constexpr std::uint32_t kBits = 16;
  const bool isStereo = !wave.right.empty();
  const std::uint32_t frameBytes = isStereo ? 4 : 2;
  const auto soundBytes = static_cast<std::uint32_t>(wave.left.size()) * frameBytes;
  const auto rate = static_cast<std::uint32_t>(wave.sampleRate);
  std::vector<std::uint8_t> bytes;
  ByteWriter writer(bytes);
  writer.text("RIFF");
  writer.word(kHeadBytes + soundBytes);
  writer.text("WAVEfmt ");
  for (const std::uint32_t word :
       {kFormatBytes, kWholeNumbers | frameBytes / 2 << 16, rate, rate * frameBytes, frameBytes | kBits << 16}) {
    writer.word(word);
  }
  writer.text("data");
  writer.word(soundBytes);
  for (std::size_t frame = 0; frame < wave.left.size(); ++frame) {
    for (const std::int16_t sample : {wave.left[frame], isStereo ? wave.right[frame] : wave.left[frame]}) {
      const auto bits = static_cast<std::uint16_t>(sample);
      bytes.push_back(static_cast<std::uint8_t>(bits));
      bytes.push_back(static_cast<std::uint8_t>(bits >> 8));
      if (!isStereo) {
        break;
      }
    }
  }
  writeFile(textOf(file), bytes);
}

/// A temporary folder that is removed with the object.
struct OwnScratch {
  explicit OwnScratch(fs::path folder) : path(std::move(folder)) {
    fs::remove_all(path);
    fs::create_directories(path);
  }
  ~OwnScratch() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  OwnScratch(const OwnScratch&) = delete;
  OwnScratch& operator=(const OwnScratch&) = delete;

  fs::path path;
};

std::uint32_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t place) {
  return place + 4 > bytes.size() ? 0 : ByteReader(std::span(bytes).subspan(place, 4)).word();
}

}  // namespace

Conversion::Conversion(OwnContent& content, const std::string& folder, const AddReport& report)
    : factoryWaves(content.tables().factoryWaves()) {
  const std::vector<Wave> waves = readLibrary(textOf(OwnPaths::libraryIn(pathOf(folder) / "Tesh")));
  std::map<std::uint64_t, std::int32_t> known;
  for (std::int32_t wave = 0; wave < factoryWaves; ++wave) {
    known.emplace(hashOf(content.waveAt(content.tables().factoryStretch(wave))), wave * kNumbersPerFactoryWave);
  }
  const OwnScratch scratch(content.paths().root / ".packed");
  std::vector<std::uint64_t> hashes;
  AddWish wish;
  for (const Wave& wave : waves) {
    hashes.push_back(hashOf(wave));
    if (known.contains(hashes.back())) {
      continue;
    }
    std::string name = wave.name;
    std::ranges::replace(name, '/', '-');
    const fs::path file = scratch.path / std::to_string(hashes.size()) / pathOf(name + ".wav");
    fs::create_directories(file.parent_path());
    writeWave(wave, file);
    wish.paths.push_back(textOf(file));
    wish.categories[textOf(file)] = wave.category;
  }
  if (!wish.paths.empty()) {
    addSounds(content, wish, report);
  }
  for (const OwnSound& sound : content.ledger().sounds) {
    if (!sound.isRemoved()) {
      known.emplace(sound.hash, sound.number);
    }
  }
  for (const std::uint64_t hash : hashes) {
    const auto found = known.find(hash);
    numbers.push_back(found == known.end() ? std::nullopt : std::optional(found->second));
  }
}

bool Conversion::isOfPacked(const std::vector<float>& values) const {
  const auto isOf = [](std::int32_t count) {
    return [count](float value) { return normaliseState(quantizeValue(value, count, 0), count, 0) == value; };
  };
  return std::ranges::all_of(values, isOf(static_cast<std::int32_t>(numbers.size()))) &&
         !std::ranges::all_of(values, isOf(numbersBeside(factoryWaves)));
}

/// Returns the value that chooses, in the content with own sounds, the wave that `value` chose in the packed content;
/// `value` itself if that wave is not there.
float Conversion::valueFor(float value) const {
  const auto count = static_cast<std::int32_t>(numbers.size());
  const auto number = numbers[static_cast<std::size_t>(quantizeValue(value, count, 0))];
  return number ? normaliseState(*number, numbersBeside(factoryWaves), 0) : value;
}

/// `values` is the offset of the first macro's value; an object follows each value.
std::size_t Conversion::convertValues(std::vector<std::uint8_t>& file, std::size_t values) const {
  std::vector<std::size_t> places;
  std::vector<float> old;
  for (std::size_t pad = 0; pad < panel::kPads; ++pad) {
    places.push_back(values + panel::padMacro(pad, panel::kSample) * vimo::ProgramDatabase::kEntryBytes);
    old.push_back(std::bit_cast<float>(wordAt(file, places.back())));
  }
  if (places.back() + 4 > file.size() || !isOfPacked(old)) {
    return 0;
  }
  for (std::size_t pad = 0; pad < panel::kPads; ++pad) {
    std::vector<std::uint8_t> bytes;
    ByteWriter(bytes).real(valueFor(old[pad]));
    std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(places[pad]));
  }
  return panel::kPads;
}

std::size_t Conversion::convertStates(std::vector<std::uint8_t>& file) const {
  std::size_t changed = 0;
  for (std::size_t from = 0; from + state::kStateTag.size() < file.size(); ++from) {
    const std::span<const std::uint8_t> rest = std::span(file).subspan(from);
    if (!std::ranges::equal(rest.first(state::kStateTag.size()), state::kStateTag,
                            [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); })) {
      continue;
    }
    const auto record = state::unpackState(rest);
    const auto sections = record ? state::readStateContent(record->content) : std::nullopt;
    if (!sections || sections->macros.size() < 4 * std::size_t{vimo::chunk::kLongestHeaderWords}) {
      continue;
    }
    // The file holds the content's bytes unchanged.
    const auto inFile = std::search(rest.begin(), rest.end(), record->content.begin(), record->content.end());
    const std::size_t macros = from + static_cast<std::size_t>(inFile - rest.begin()) +
                               static_cast<std::size_t>(sections->macros.data() - record->content.data());
    constexpr std::size_t kCount = 4;
    constexpr std::size_t kListSize = 8;
    constexpr std::size_t kProgramsSize = 12;
    if (inFile != rest.end() && wordAt(file, macros) == vimo::chunk::kVersionWithObjects &&
        wordAt(file, macros + kCount) >= kMacrosWithSamples) {
      changed += convertValues(file, macros + 4 * std::size_t{vimo::chunk::kLongestHeaderWords} +
                                         wordAt(file, macros + kListSize) + wordAt(file, macros + kProgramsSize));
    }
  }
  return changed;
}

std::size_t Conversion::convertPrograms(std::vector<std::uint8_t>& file) const {
  constexpr std::size_t kHead = 20;
  constexpr std::size_t kImageHead = 8;
  constexpr std::size_t kRecordHead = 224;
  const std::size_t macros = wordAt(file, 4);
  const std::size_t count = wordAt(file, kHead + 4);
  const std::size_t record = kRecordHead + macros * vimo::ProgramDatabase::kEntryBytes;
  const bool isOurs = wordAt(file, 0) == vimo::ProgramDatabase::kImageVersion && macros >= kMacrosWithSamples &&
                      wordAt(file, kHead) == vimo::ProgramDatabase::kImageVersion &&
                      file.size() == kHead + kImageHead + count * record;
  std::size_t changed = 0;
  for (std::size_t program = 0; isOurs && program < count; ++program) {
    changed += convertValues(file, kHead + kImageHead + program * record + kRecordHead);
  }
  return changed;
}

std::size_t Conversion::convert(std::vector<std::uint8_t>& file) const {
  return convertStates(file) + convertPrograms(file);
}

}  // namespace sivray::content
