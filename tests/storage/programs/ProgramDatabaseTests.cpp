// Program images of all versions, byte by byte, the list's operations, and the files that contain an image.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/programs/ProgramDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/LittleEndian.h"
#include "storage/programs/UserProgramFile.h"

namespace tesh::vimo {
namespace {

using cofu::core::ByteWriter;
using Bytes = std::vector<std::uint8_t>;
using Mode = ProgramDatabase::Mode;

struct Owner final : MacroProgramDatabaseDelegate {
  std::uint64_t macroCount() const override { return macros; }
  float macroValue(std::uint64_t index) const override { return 0.25F * static_cast<float>(index); }
  std::uint64_t macroObject(std::uint64_t index) const override { return index == 1 ? 0x1122334455667788U : 0U; }
  const std::string& programName() const override { return name; }
  const std::string& programComment() const override { return comment; }
  std::uint32_t programTime() const override { return 77; }
  std::string name = "Kit";
  std::string comment = "loud";
  std::uint64_t macros = 2;
};

/// Returns an image of `count` records with two macros each; the second macro's value is the record's index.
Bytes image(std::uint32_t version, std::uint32_t count, std::uint32_t claimed) {
  Bytes bytes;
  ByteWriter writer(bytes);
  writer.word(version);
  writer.word(claimed);
  for (std::uint32_t i = 0; i < count; ++i) {
    if (version != 256) {
      writer.word(9);
      for (const char* text : {"Name", "Comment"}) {
        const std::string field = text + std::to_string(i);
        writer.text(field);
        writer.zeros(96 - field.size());
      }
      writer.word(1000 + i);
      writer.zeros(version == 512 ? 8 : 24);
    }
    for (const float value : {0.5F, static_cast<float>(i)}) {
      writer.real(value);
      if (version == 1024) {
        writer.longWord(7);
      }
    }
  }
  return bytes;
}

std::string names(const ProgramDatabase& database) {
  std::string all;
  for (std::size_t i = 0; i < database.programCount(); ++i) {
    all += database.name(i).back();
  }
  return all;
}

TEST(ProgramDatabase, SharesTheEntriesOfEqualImagesUntilTheyChange) {
  Owner owner;
  const Bytes bytes = image(1024, 3, 3);
  ProgramDatabase first(owner);
  first.load(bytes, 2, Mode::replace);
  {
    ProgramDatabase second(owner);
    second.load(bytes, 2, Mode::replace);
    EXPECT_EQ(second.entries(1).data(), first.entries(1).data());
    second.overwriteFromDelegate(1);
    second.fillMacros(0, std::vector{0.125F}, 2, 1);
    EXPECT_EQ(second.entries(0).data(), first.entries(0).data());
    EXPECT_EQ(second.entries(1)[0].object, 0U);
    EXPECT_EQ(second.entries(2)[0].value, 0.125F);
    EXPECT_EQ(second.entries(2)[1].value, 2.0F);
    EXPECT_NE(second.record(0)->id, first.record(0)->id);
  }
  EXPECT_EQ(first.entries(1)[0].object, 7U);
  EXPECT_EQ(first.entries(2)[0].value, 0.5F);

  // Offsets of the sign of a zero and of the last object.
  const std::size_t sign =
      ProgramDatabase::kImageHeadBytes + ProgramDatabase::kRecordHeadBytes + ProgramDatabase::kEntryBytes + 3;
  for (const std::size_t place : {sign, bytes.size() - 1}) {
    Bytes other = bytes;
    other[place] ^= 0x80U;
    ProgramDatabase changed(owner);
    changed.load(other, 2, Mode::replace);
    EXPECT_NE(changed.entries(0).data(), first.entries(0).data()) << place;
  }
}

TEST(ProgramDatabase, ReadsEveryImageVersion) {
  for (const std::uint32_t version : {256U, 512U, 768U, 1024U}) {
    Owner owner;
    ProgramDatabase database(owner);
    database.load(image(version, 3, 3), 2, Mode::replace);
    ASSERT_EQ(database.programCount(), 3U) << version;
    EXPECT_EQ(database.name(2), version == 256 ? "2" : "Name2");
    EXPECT_EQ(database.comment(2), version == 256 ? "TESH" : "Comment2");
    EXPECT_EQ(database.entries(2)[0].value, 0.5F);
    EXPECT_EQ(database.entries(2)[1].value, 2.0F);
    EXPECT_EQ(database.entries(2)[1].object, version == 1024 ? 7U : 0U);
    EXPECT_EQ(database.record(2)->marker, ProgramRecord::kMarkerLoaded);
    EXPECT_EQ(database.time(2) == 1002, version != 256);
  }
}

TEST(ProgramDatabase, TreatsAWrongCountAsEachVersionDoes) {
  testing::internal::CaptureStderr();
  const std::map<std::pair<std::uint32_t, std::uint32_t>, std::size_t> heldByClaim{
      {{256, 2}, 2}, {{256, 9}, 3},  {{512, 9}, 3},  {{512, 1}, 3},  {{768, 9}, 3},
      {{768, 1}, 1}, {{1024, 2}, 0}, {{1024, 9}, 0}, {{1024, 0}, 0}, {{640, 3}, 4}};
  for (const auto& [claim, held] : heldByClaim) {
    Owner owner;
    ProgramDatabase database(owner);
    database.load(image(1024, 4, 4), 2, Mode::replace);
    database.load(image(claim.first, 3, claim.second), 2, Mode::replace);
    EXPECT_EQ(database.programCount(), held) << claim.first << " claims " << claim.second;
  }
  testing::internal::GetCapturedStderr();
}

TEST(ProgramDatabase, HoldsTheGrowthOfImagesWithShortRecords) {
  constexpr std::uint32_t kRecords = 16384;
  Bytes bytes;
  ByteWriter writer(bytes);
  writer.word(256);
  writer.word(kRecords);
  writer.zeros(kRecords * sizeof(float));
  Owner owner;
  owner.macros = 112;
  ProgramDatabase database(owner);
  database.load(bytes, 1, Mode::replace);
  database.setMacroCount(112);
  EXPECT_LE(database.byteSize(), 17 * bytes.size());
  EXPECT_GT(database.programCount(), 400U);
  EXPECT_EQ(database.load(image(256, 3, 3), 2, Mode::append), 3U) << "a few are always read";
}

TEST(ProgramDatabase, FitsRecordsOfEveryOriginToOneNumberOfMacros) {
  Owner owner;
  ProgramDatabase database(owner);
  ProgramDatabase other(owner);
  database.load(image(256, 2, 2), 2, Mode::replace);
  database.load(image(256, 2, 2), 4, Mode::append);
  other.load(image(256, 2, 2), 1, Mode::replace);
  const auto sizes = [&database] {
    std::vector<std::size_t> all;
    for (std::size_t i = 0; i < database.programCount(); ++i) {
      all.push_back(database.entries(i).size());
    }
    return all;
  };
  database.setMacroCount(4);
  EXPECT_EQ(sizes(), (std::vector<std::size_t>{4, 4, 4}));
  database.takeAll(other);
  database.setMacroCount(4);
  EXPECT_EQ(sizes(), (std::vector<std::size_t>{4, 4, 4, 4, 4}));
}

TEST(ProgramDatabase, ReadsOnlyWholeRecordsOfATruncatedImage) {
  testing::internal::CaptureStderr();
  for (const std::uint32_t version : {256U, 512U, 768U, 1024U}) {
    const Bytes whole = image(version, 3, 3);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      Owner owner;
      ProgramDatabase database(owner);
      const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
      database.load(cut, 2, Mode::append);
      EXPECT_LT(database.programCount(), version == 1024 ? 1U : 3U) << version << " at " << size;
    }
  }
  Owner owner;
  ProgramDatabase database(owner);
  database.load(image(256, 0, 0xFFFFFFFF), 0, Mode::replace);
  database.load(image(1024, 1, 0xFFFFFFFF), 0xFFFFFFFF, Mode::replace);
  EXPECT_EQ(database.programCount(), 0U);
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              testing::StartsWith("program database : # num programs did not "));
}

TEST(ProgramDatabase, SavesTheNewestVersionByteForByte) {
  Owner owner;
  owner.name = std::string(100, 'x');
  ProgramDatabase database(owner);
  database.setMacroCount(2);
  database.appendFromDelegate();
  Bytes saved;
  database.save(saved);
  ASSERT_EQ(saved.size(), 8U + 224 + 24);
  EXPECT_EQ(saved.size(), database.byteSize());

  Bytes expected;
  ByteWriter writer(expected);
  for (const std::uint32_t word : {1024U, 1U, 1024U}) {
    writer.word(word);
  }
  writer.text(std::string(95, 'x'));
  writer.zeros(1);
  writer.text("loud");
  writer.zeros(92);
  writer.word(77);
  writer.zeros(8);
  writer.bytes(database.record(0)->id);
  writer.real(0.0F);
  writer.longWord(0);
  writer.real(0.25F);
  writer.longWord(0x1122334455667788U);
  EXPECT_EQ(saved, expected);
  EXPECT_EQ(saved[8 + 208 + 6] >> 4, 4);
  EXPECT_EQ(saved[8 + 208 + 8] >> 6, 2);

  const auto id = database.record(0)->id;
  owner.name = "New";
  database.overwriteFromDelegate(0);
  EXPECT_EQ(database.name(0), "New");
  EXPECT_EQ(database.record(0)->id, id);
  ProgramDatabase other(owner);
  other.load(saved, 2, Mode::replace);
  EXPECT_NE(other.record(0)->id, id);
}

TEST(ProgramDatabase, MovesAndRemovesRecordsWithoutGaps) {
  Owner owner;
  ProgramDatabase database(owner);
  database.load(image(1024, 5, 5), 2, Mode::replace);
  database.move(1, 3);
  EXPECT_EQ(names(database), "02314");
  database.move(4, 0);
  EXPECT_EQ(names(database), "40231");
  database.move(0, 5);
  database.remove(5);
  database.remove(2);
  EXPECT_EQ(names(database), "4031");
  EXPECT_EQ(database.name(4), "");
  EXPECT_TRUE(database.entries(4).empty());
}

TEST(UserProgramFile, SurvivesWritingAndBelongsToItsInstrument) {
  Owner owner;
  ProgramDatabase database(owner);
  database.load(image(1024, 2, 2), 2, Mode::replace);
  const Bytes file = makeUserProgramFile(database);
  const Bytes exported = makeExportedPrograms(database, "Sivray");
  ASSERT_EQ(exported.size(), file.size() + 64);
  EXPECT_TRUE(std::equal(file.begin(), file.end(), exported.begin() + 64));
  Bytes saved;
  database.save(saved);

  const auto bank = readExportedPrograms(exported, "Sivray");
  ASSERT_TRUE(bank);
  EXPECT_EQ(bank->macroCount, 2U);
  EXPECT_EQ(Bytes(bank->image.begin(), bank->image.end()), saved);
  EXPECT_FALSE(readExportedPrograms(exported, "Sivra"));
  EXPECT_FALSE(readExportedPrograms(exported, "Sivray2"));
  EXPECT_FALSE(readExportedPrograms(std::span(exported).first(64), "Sivray"));

  Bytes older = file;
  older.erase(older.begin() + 16, older.begin() + 20);
  older[0] = 0;
  older[1] = 3;
  EXPECT_EQ(readUserProgramFile(older)->image.size(), saved.size());
  EXPECT_FALSE(readUserProgramFile(std::span(file).first(30)));
  EXPECT_FALSE(readUserProgramFile(std::span(file).first(11)));
  Bytes lying = file;
  ++lying[8];
  EXPECT_FALSE(readUserProgramFile(lying)) << "its image is longer than the file";
}

}  // namespace
}  // namespace tesh::vimo
