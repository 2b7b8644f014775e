// Reads four versions of the macro chunk (macro list, factory programs and current values) and writes the newest.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <optional>

#include "core/LittleEndian.h"
#include "macro/MacroChunkFormat.h"
#include "macro/MacroController.h"

namespace tesh::vimo {
namespace {

using namespace chunk;
using cofu::core::ByteReader;
using cofu::core::bytesAt;
using cofu::core::ByteWriter;

constexpr std::size_t kPlainValueBytes = 4;
constexpr std::size_t kObjectValueBytes = 12;

/// The header of a chunk. Words are read from their places in its version and kept at those of the newest version.
struct ChunkHeader {
  std::uint32_t version = 0;
  std::uint32_t bytes = 0;
  std::uint32_t macroCount = 0;
  std::uint32_t macroBytes = 0;
  std::uint32_t databaseBytes = 0;
  std::uint32_t textOffset = 0;
  std::uint32_t nameBytes = 0;
  std::uint32_t commentBytes = 0;
  std::uint32_t time = 0;
  ProgramSelection selection;

  std::uint64_t databaseStart() const { return std::uint64_t{bytes} + macroBytes; }
  std::uint64_t valuesStart() const { return databaseStart() + databaseBytes; }
};

std::optional<ChunkHeader> readHeader(std::span<const std::uint8_t> chunk) {
  ChunkHeader header;
  header.version = cofu::core::wordIn(chunk, 0).value_or(0);
  header.bytes = 4 * headerWords(header.version);
  if (header.bytes == 0 || chunk.size() < header.bytes) {
    return std::nullopt;
  }
  std::array<std::uint32_t, kLongestHeaderWords> words{};
  ByteReader reader(chunk);
  std::generate_n(words.begin(), header.bytes / 4, [&reader] { return reader.word(); });
  header.macroCount = words[1];
  header.macroBytes = words[2];
  header.databaseBytes = words[3];
  header.textOffset = words[5];
  const std::uint32_t* texts = &words[header.version == kVersionTexts ? 6 : 7];
  header.nameBytes = texts[0];
  header.commentBytes = texts[1];
  header.time = texts[2];
  header.selection = {texts[3], Bank{texts[4]}};
  return header;
}

/// Calls `take(index, value, object)` for every whole entry of the values; object is 0 in versions without objects.
template <typename Take>
void forEachValue(const ChunkHeader& header, std::span<const std::uint8_t> values, Take take) {
  const bool withObjects = header.version == kVersionWithObjects;
  const std::size_t held =
      std::min(std::size_t{header.macroCount}, values.size() / (withObjects ? kObjectValueBytes : kPlainValueBytes));
  ByteReader reader(values);
  for (std::size_t index = 0; index < held; ++index) {
    const float value = reader.real();
    take(index, value, withObjects ? reader.longWord() : 0);
  }
}

/// The text of `size` bytes, or nothing if it does not lie completely inside `bytes`.
std::optional<std::string_view> textIn(std::span<const std::uint8_t> bytes, std::uint64_t offset, std::uint32_t size) {
  const auto found = bytesAt(bytes, offset, size);
  if (found.size() != size) {
    return std::nullopt;
  }
  return std::string_view(reinterpret_cast<const char*>(found.data()), found.size());
}

}  // namespace

using Controller = MacroController<Generator<float>>;

void Controller::readChunk(std::span<const std::uint8_t> chunk, ChunkParts parts) {
  if (parts == ChunkParts::all && !macros.empty()) {
    clearMacros();
  }
  const auto header = readHeader(chunk);
  if (!header) {
    return;
  }
  if (parts == ChunkParts::all) {
    readMacroSection(bytesAt(chunk, header->bytes, header->macroBytes));
    shelf.loadDatabase(Bank::factory, bytesAt(chunk, header->databaseStart(), header->databaseBytes),
                       header->macroCount, ProgramDatabase::Mode::replace);
  }
  const auto values = bytesAt(chunk, header->valuesStart());
  forEachValue(*header, values, [this](std::uint64_t index, float value, std::uint64_t object) {
    if (MacroParameterControl* const macro = macroAt(index)) {
      macro->objectValue = object;
      macro->storedValue = value;
      macro->liveValue = value;
      macro->echoValue = value;
      macro->sendToTarget(value);
    }
  });
  if (header->version == kVersionValues) {
    return;
  }
  if (const auto name = textIn(values, header->textOffset, header->nameBytes)) {
    selectedName.assign(*name);
  }
  const std::uint64_t commentOffset = std::uint64_t{header->textOffset} + header->nameBytes;
  if (const auto comment = textIn(values, commentOffset, header->commentBytes)) {
    selectedComment.assign(*comment);
  }
  selectedTime = header->time;
  shelf.setSelection(header->selection.program, header->selection.bank);
}

void Controller::addReadsOfChunk(std::span<const std::uint8_t> chunk, ComingValues& coming) const {
  if (const auto header = readHeader(chunk)) {
    forEachValue(*header, bytesAt(chunk, header->valuesStart()),
                 [&](std::uint64_t index, float value, std::uint64_t) { addReadsOfMacro(index, value, coming); });
  }
}

void Controller::readMacroSection(std::span<const std::uint8_t> section) {
  ByteReader reader(section);
  const std::uint32_t count = reader.word();
  ByteReader sizes(reader.take(std::uint64_t{count} * 4));
  for (std::uint32_t i = 0; i < count && !reader.hasFailed(); ++i) {
    const auto record = reader.take(sizes.word());
    if (!reader.hasFailed()) {
      addMacro().readRecord(record);
    }
  }
}

void Controller::writeChunk(std::vector<std::uint8_t>& out) { writeChunk(takeValues(), out); }

ChunkValues Controller::takeValues() {
  shelf.fit(Bank::factory);
  ChunkValues values{{}, selectedName, selectedComment, selectedTime, shelf.selection()};
  values.entries.reserve(macros.size());
  for (const auto& macro : macros) {
    values.entries.push_back({macro->storedValue, macro->objectValue});
  }
  return values;
}

void Controller::writeChunk(const ChunkValues& values, std::vector<std::uint8_t>& out) const {
  const auto list = macroSection();
  const auto count = static_cast<std::uint32_t>(macros.size());
  ByteWriter writer(out);
  writer.word(kVersionWithObjects);
  writer.word(count);
  writer.word(static_cast<std::uint32_t>(list.size()));
  writer.word(static_cast<std::uint32_t>(shelf.databaseByteSize(Bank::factory)));
  writer.word(4);
  writer.word(static_cast<std::uint32_t>(kObjectValueBytes) * count);
  writer.word(0);
  writer.word(static_cast<std::uint32_t>(values.name.size()));
  writer.word(static_cast<std::uint32_t>(values.comment.size()));
  writer.word(values.time);
  writer.word(static_cast<std::uint32_t>(values.selection.program));
  writer.word(static_cast<std::uint32_t>(values.selection.bank));
  writer.bytes(list);
  shelf.database(Bank::factory)->save(out);
  for (const ProgramEntry& entry : values.entries) {
    writer.real(entry.value);
    writer.longWord(entry.object);
  }
  writer.text(values.name);
  writer.text(values.comment);
}

std::vector<std::uint8_t> Controller::macroSection() const {
  std::vector<std::uint8_t> records;
  std::vector<std::uint8_t> section;
  ByteWriter writer(section);
  writer.word(static_cast<std::uint32_t>(macros.size()));
  for (const auto& macro : macros) {
    const std::size_t before = records.size();
    macro->writeRecord(records);
    writer.word(static_cast<std::uint32_t>(records.size() - before));
  }
  writer.bytes(records);
  return section;
}

void Controller::readPatches(std::span<const std::uint8_t> file) {
  const auto header = readHeader(file);
  if (!header || header->version != kVersionTexts) {
    return;
  }
  const auto image = bytesAt(file, std::uint64_t{header->bytes} + header->macroBytes, header->databaseBytes);
  shelf.loadDatabase(Bank::factory, image, header->macroCount, ProgramDatabase::Mode::append);
}

}  // namespace tesh::vimo
