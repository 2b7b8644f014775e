// Lookups in valid and broken index files, by the engine and by a browser.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/LittleEndian.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "engine/samples/WaveDatabase.h"
#include "support/SampleFolder.h"

namespace tesh::bramel::plugin::sivray {
namespace {

using Bytes = std::vector<std::uint8_t>;
using cofu::core::ByteWriter;
using vimo::SivraySampleLibrary;

Bytes sampleRecords(std::initializer_list<std::array<std::uint32_t, 3>> records) {
  Bytes bytes;
  ByteWriter writer(bytes);
  for (const auto& [start, end, rate] : records) {
    writer.word(start);
    writer.word(end);
    writer.word(rate);
  }
  return bytes;
}

/// Appends a record of 24 bytes: a word, a name of twelve bytes, two words.
void addRecord(Bytes& bytes, std::uint32_t first, std::string name, std::uint32_t left = 0, std::uint32_t right = 0) {
  name.resize(12, '\0');
  ByteWriter writer(bytes);
  writer.word(first);
  writer.text(name);
  writer.word(left);
  writer.word(right);
}

TEST(WaveDatabase, AnswersMonoAndStereoWavesFromTheirStretches) {
  WaveDatabase database("SivrayPCM");
  Bytes waves;
  addRecord(waves, 1, "mono", 1, 99);
  addRecord(waves, 2, "twelve chars", 0, 1);
  database.loadFrom(sampleRecords({{10, 19, 22050}, {40, 44, 48000}}), waves);
  ASSERT_EQ(database.waveCount(), 2);
  const WaveInfo mono = database.lookup(0);
  EXPECT_EQ(mono.name, "mono");
  EXPECT_EQ(mono.sampleRate, 48000.0F);
  EXPECT_EQ(mono.leftStart, 40U);
  EXPECT_EQ(mono.rightStart, 40U);
  EXPECT_EQ(mono.rightEnd, 44U);
  const WaveInfo stereo = database.lookup(1);
  EXPECT_EQ(stereo.name, "twelve chars");
  EXPECT_EQ(stereo.sampleRate, 22050.0F) << "the left stretch rules";
  EXPECT_EQ(stereo.leftEnd, 19U);
  EXPECT_EQ(stereo.rightStart, 40U);
}

TEST(WaveDatabase, AnswersWhatCannotBePlayedAsInvalid) {
  WaveDatabase database("SivrayPCM");
  Bytes waves;
  addRecord(waves, 0, "no type");
  addRecord(waves, 3, "no type");
  addRecord(waves, 1, "no stretch", 1);
  addRecord(waves, 2, "no left", 0xFFFFFFFF, 0);
  addRecord(waves, 2, "no right", 0, 1);
  addRecord(waves, 1, "rate 0", 0);
  database.loadFrom(sampleRecords({{5, 9, 0}}), waves);
  for (const std::int64_t id : {-1L, 0L, 1L, 2L, 3L, 4L, 6L, 1L << 40}) {
    const WaveInfo info = database.lookup(id);
    EXPECT_EQ(info.valid, 0U) << id;
    EXPECT_EQ(info.name, "") << id;
    EXPECT_EQ(info.leftStart + info.leftEnd + info.rightStart + info.rightEnd, 0U) << id;
    EXPECT_EQ(info.sampleRate, 44100.0F) << id;
  }
  EXPECT_EQ(database.lookup(5).valid, 1U);
  EXPECT_EQ(database.lookup(5).sampleRate, 44100.0F);
}

TEST(WaveDatabase, TakesTheWholeRecordsOfFilesThatAreCutAnywhere) {
  Bytes waves;
  for (std::uint32_t i = 0; i < 3; ++i) {
    addRecord(waves, 2, "wave", i, i);
  }
  const Bytes samples = sampleRecords({{0, 1, 44100}, {2, 3, 44100}, {4, 5, 44100}});
  for (std::size_t cut = 0; cut <= waves.size(); ++cut) {
    const std::size_t samplesCut = std::min(cut, samples.size());
    WaveDatabase database("SivrayPCM");
    database.loadFrom(std::span(samples).first(samplesCut), std::span(waves).first(cut));
    ASSERT_EQ(database.waveCount(), static_cast<std::int32_t>(cut / 24));
    for (std::int64_t id = 0; id < 4; ++id) {
      const bool isWhole = id < database.waveCount() && id < static_cast<std::int64_t>(samplesCut / 12);
      ASSERT_EQ(database.lookup(id).valid, isWhole ? 1U : 0U) << cut << " bytes, wave " << id;
    }
  }
}

TEST(WaveDatabase, HasNoWavesWithoutFiles) {
  const support::SampleFolder folder;
  std::filesystem::remove(folder.pathOf("drumparam.bin"));
  std::filesystem::remove(folder.pathOf("sampleparam.bin"));
  WaveDatabase database("SivrayPCM");
  EXPECT_EQ(database.waveCount(), 0);
  EXPECT_EQ(database.lookup(0).valid, 0U);
}

TEST(SampleLibrary, SortsByCategoryAndKeepsTheOrderWithin) {
  Bytes records;
  addRecord(records, 3, "c0");
  addRecord(records, 1, "a0");
  addRecord(records, 3, "c1");
  addRecord(records, 1, "a1");
  records.push_back(9);  // the first byte of an incomplete record
  SivraySampleLibrary library;
  ASSERT_TRUE(library.loadFrom(records));
  EXPECT_EQ(library.waveCount(), 4);
  EXPECT_EQ(library.categoryCount(), 3);
  EXPECT_EQ(library.categorySize(0), 2);
  EXPECT_EQ(library.categorySize(1), 0);
  EXPECT_EQ(library.categorySize(2), 2);
  const std::array<std::int32_t, 4> ids{1, 3, 0, 2};
  for (std::int32_t place = 0; place < 4; ++place) {
    EXPECT_EQ(library.waveId(place), ids[static_cast<std::size_t>(place)]);
    EXPECT_EQ(library.flatIndexOf(library.waveId(place)), place);
  }
  EXPECT_EQ(library.waveName(3), "c1");
  EXPECT_EQ(library.waveCategory(3), 2);
  EXPECT_EQ(library.flatIndexOf(77), 0);
}

TEST(SampleLibrary, LeavesOutRecordsOutsideTheCategories) {
  Bytes records;
  for (const std::uint32_t category : {0U, 17U, 16U, 0xFFFFFFFFU, 1U}) {
    addRecord(records, category, "x");
  }
  SivraySampleLibrary library;
  ASSERT_TRUE(library.loadFrom(records));
  EXPECT_EQ(library.waveCount(), 2);
  EXPECT_EQ(library.waveId(0), 4);
  EXPECT_EQ(library.waveId(1), 2);
  EXPECT_EQ(library.categoryCount(), 16);
  for (const std::int32_t outside : {-1, 2, 1 << 30}) {
    EXPECT_EQ(library.waveName(outside), "");
    EXPECT_EQ(library.waveId(outside) + library.waveCategory(outside), 0);
  }
  EXPECT_EQ(library.categorySize(16) + library.categorySize(-1), 0);
  EXPECT_FALSE(library.loadFrom({}));
  EXPECT_FALSE(library.load("no such file"));
  EXPECT_EQ(library.waveCount(), 2) << "nothing to read changes nothing";
}

/// Own sounds have numbers between those of the factory. Free numbers are not listed.
TEST(SampleLibrary, CountsNumbersAndEntriesApart) {
  Bytes records;
  constexpr std::uint32_t kBetween = 3;
  const auto add = [&records](std::uint32_t category, const char* name, std::uint32_t distance) {
    addRecord(records, category, name);
    records[records.size() - 8] = static_cast<std::uint8_t>(distance);
  };
  add(2, "snare", 0);
  add(1, "mine", kBetween);
  add(0, "kick", kBetween);
  add(1, "kick", 0);
  SivraySampleLibrary library;
  ASSERT_TRUE(library.loadFrom(records));
  EXPECT_EQ(library.waveCount(), 3);
  EXPECT_EQ(library.numberCount(), 4);
  EXPECT_EQ(library.numbersPerFactoryWave(), 3);
  EXPECT_TRUE(library.isFree(2));
  EXPECT_FALSE(library.isFree(1) || library.isFree(3) || library.isFree(4) || library.isFree(-1));
  const auto nameOf = [&library](std::int32_t id) { return library.waveName(library.flatIndexOf(id)); };
  EXPECT_EQ(nameOf(0) + nameOf(1) + nameOf(2) + nameOf(3), "snareminekickkick");

  add(1, "more", 0);  // One more number than fits between the factory's waves.
  ASSERT_TRUE(library.loadFrom(records));
  EXPECT_EQ(library.numbersPerFactoryWave(), 1);
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
