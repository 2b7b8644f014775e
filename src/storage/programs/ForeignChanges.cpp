// Compares lists of programs by hashes of their contents.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ForeignChanges.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <unordered_map>

#include "core/LittleEndian.h"

namespace tesh::vimo {
namespace {

/// FNV-1a over 64-bit words, so that a list of thousands is compared in milliseconds.
class Print {
 public:
  void add(std::uint64_t word) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    value = (value ^ word) * kPrime;
    value ^= value >> 32;
  }
  void add(const ProgramRecord::Text& text) {
    for (const char letter : text) {
      add(static_cast<std::uint64_t>(static_cast<unsigned char>(letter)));
    }
  }
  std::uint64_t get() const { return value; }

 private:
  std::uint64_t value = 0xCBF29CE484222325;
};

std::uint64_t printOf(const ProgramRecord& record) {
  Print print;
  print.add(record.name);
  print.add(record.comment);
  print.add(record.time);
  for (const ProgramEntry& entry : record.entries.all()) {
    print.add(std::bit_cast<std::uint32_t>(entry.value));
    print.add(entry.object);
  }
  return print.get();
}

/// For each program of `database`, whether it is in `wanted`. Of equal programs, as many are found as `wanted`
/// contains.
std::vector<bool> findEach(const ProgramPrints& wanted, const ProgramDatabase& database) {
  std::unordered_map<std::uint64_t, std::size_t> left;
  for (const std::uint64_t print : wanted) {
    ++left[print];
  }
  std::vector<bool> isFound(database.programCount());
  for (std::size_t i = 0; i < isFound.size() && !left.empty(); ++i) {
    const auto found = left.find(printOf(*database.record(i)));
    isFound[i] = found != left.end();
    if (isFound[i] && --found->second == 0) {
      left.erase(found);
    }
  }
  return isFound;
}

ProgramPrints difference(const ProgramPrints& all, const ProgramPrints& without) {
  ProgramPrints rest;
  std::ranges::set_difference(all, without, std::back_inserter(rest));
  return rest;
}

}  // namespace

ProgramPrints printsOf(const ProgramDatabase& database) {
  ProgramPrints prints(database.programCount());
  for (std::size_t i = 0; i < prints.size(); ++i) {
    prints[i] = printOf(*database.record(i));
  }
  std::ranges::sort(prints);
  return prints;
}

std::unique_ptr<ProgramDatabase> readProgramsOfOthers(const std::optional<UserProgramImage>& file,
                                                      const ProgramShelf& shelf) {
  if (!file || cofu::core::wordIn(file->image, 0) != ProgramDatabase::kImageVersion) {
    return nullptr;
  }
  auto database = shelf.readImage(file->image, file->macroCount);
  const bool isWhole = database->programCount() == cofu::core::wordIn(file->image, 4);
  return isWhole ? std::move(database) : nullptr;
}

std::vector<bool> findGone(const ProgramPrints& known, const ProgramDatabase& ours, const ProgramDatabase& inFile) {
  return findEach(difference(known, printsOf(inFile)), ours);
}

void keepNew(const ProgramPrints& known, ProgramDatabase& inFile) {
  std::vector<bool> isOld = findEach(difference(printsOf(inFile), known), inFile);
  isOld.flip();
  inFile.removeAll(isOld);
}

}  // namespace tesh::vimo
