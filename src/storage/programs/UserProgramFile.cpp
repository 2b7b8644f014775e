// Reads and writes the headers of program files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/UserProgramFile.h"

#include <algorithm>
#include <cstddef>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

using cofu::core::ByteWriter;

constexpr std::uint32_t kFileVersion = 1024;
constexpr std::uint32_t kFirstVersionWithLongHead = 769;
constexpr std::size_t kShortHeadBytes = 16;
constexpr std::size_t kLongHeadBytes = 20;

constexpr std::uint32_t kExportVersion = 256;
constexpr std::size_t kExportNameBytes = 60;
constexpr std::size_t kExportHeadBytes = 64;

void appendUserProgramFile(std::vector<std::uint8_t>& out, const ProgramDatabase& database) {
  ByteWriter writer(out);
  writer.word(kFileVersion);
  writer.word(static_cast<std::uint32_t>(database.macroCount()));
  writer.word(static_cast<std::uint32_t>(database.byteSize()));
  writer.word(4);
  writer.word(0);
  database.save(out);
}

}  // namespace

std::optional<UserProgramImage> readUserProgramFile(std::span<const std::uint8_t> file) {
  const auto version = cofu::core::wordIn(file, 0);
  const auto macroCount = cofu::core::wordIn(file, 4);
  const auto size = cofu::core::wordIn(file, 8);
  if (!version || !macroCount || !size) {
    return std::nullopt;
  }
  const std::size_t head = *version < kFirstVersionWithLongHead ? kShortHeadBytes : kLongHeadBytes;
  const auto image = cofu::core::bytesAt(file, head, *size);
  if (image.size() != *size && cofu::core::wordIn(image, 0) == ProgramDatabase::kImageVersion) {
    return std::nullopt;
  }
  return UserProgramImage{*macroCount, image};
}

std::optional<UserProgramImage> readExportedPrograms(std::span<const std::uint8_t> file, std::string_view instrument) {
  if (file.size() <= kExportHeadBytes || cofu::core::wordIn(file, 0) != kExportVersion) {
    return std::nullopt;
  }
  const auto field = file.subspan(4, kExportNameBytes);
  const auto end = std::find(field.begin(), field.end(), std::uint8_t{0});
  if (!std::equal(field.begin(), end, instrument.begin(), instrument.end())) {
    return std::nullopt;
  }
  return readUserProgramFile(file.subspan(kExportHeadBytes));
}

std::vector<std::uint8_t> makeUserProgramFile(const ProgramDatabase& database) {
  std::vector<std::uint8_t> file;
  appendUserProgramFile(file, database);
  return file;
}

std::vector<std::uint8_t> makeExportedPrograms(const ProgramDatabase& database, std::string_view instrument) {
  const auto name = instrument.substr(0, kExportNameBytes);
  std::vector<std::uint8_t> file;
  ByteWriter writer(file);
  writer.word(kExportVersion);
  writer.text(name);
  writer.zeros(kExportNameBytes - name.size());
  appendUserProgramFile(file, database);
  return file;
}

}  // namespace tesh::vimo
