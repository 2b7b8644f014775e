// Fuzzes program images and exported files: any bytes give whole programs or none, and accepted programs survive
// saving. The first byte chooses the macro count.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "storage/programs/UserProgramFile.h"

namespace {

using tesh::vimo::ProgramDatabase;

struct Owner final : tesh::vimo::MacroProgramDatabaseDelegate {
  std::uint64_t macroCount() const override { return 112; }
  float macroValue(std::uint64_t) const override { return 0.0F; }
  std::uint64_t macroObject(std::uint64_t) const override { return 0; }
  const std::string& programName() const override { return name; }
  const std::string& programComment() const override { return name; }
  std::uint32_t programTime() const override { return 0; }
  std::string name;
};

void check(std::span<const std::uint8_t> image, std::uint64_t macroCount) {
  const Owner owner;
  ProgramDatabase database(owner);
  database.load(image, macroCount, ProgramDatabase::Mode::replace);
  if (macroCount > 256) {
    database.setMacroCount(256);
  }
  if (database.programCount() > ProgramDatabase::kAlwaysRead) {
    database.setMacroCount(112);
    if (database.byteSize() > (ProgramDatabase::kMostGrowth + 1) * image.size() + ProgramDatabase::kImageHeadBytes) {
      std::abort();
    }
  }
  std::vector<std::uint8_t> saved;
  database.save(saved);
  ProgramDatabase again(owner);
  again.load(saved, database.macroCount(), ProgramDatabase::Mode::replace);
  if (saved.size() != database.byteSize() || again.programCount() != database.programCount()) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  if (const auto bank = tesh::vimo::readExportedPrograms(bytes, "Sivray")) {
    check(bank->image, bank->macroCount);
  } else if (!bytes.empty()) {
    check(bytes.subspan(1), bytes[0]);
  }
  return 0;
}
