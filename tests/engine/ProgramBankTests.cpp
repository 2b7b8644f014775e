// The engine's chunk and programs: round trips, older versions, and invalid data.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstring>

#include "FrameScene.h"

namespace {

using namespace scene;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kLevelOfPad0 = 0x008;
constexpr std::size_t kRecordsAt = 36;
constexpr std::size_t kOldRecord = 1228;
constexpr std::size_t kNameInRecord = 4;
constexpr std::size_t kLevelInRecord = 76 + 8 * 4;

struct Bank : Player {
  Bytes state() {
    const auto bytes = plugin.getState();
    return {bytes.begin(), bytes.end()};
  }

  float level() const { return plugin.getParameter(kLevelOfPad0) * 127.0F; }
  void setLevel(int level) { set(kLevelOfPad0, static_cast<float>(level) / 127.0F); }
  void changeProgram(int index) {
    message(0, {0xC0, index});
    process(1);
  }
};

void setWord(Bytes& bytes, std::size_t at, std::uint32_t word) { std::memcpy(bytes.data() + at, &word, sizeof(word)); }

std::uint32_t wordAt(const Bytes& bytes, std::size_t at) {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes.data() + at, sizeof(word));
  return word;
}

/// Returns a chunk of an older version, with a level and a name in its edit buffer.
Bytes olderChunk(std::uint32_t version, std::uint32_t level) {
  Bytes bytes(158448);
  setWord(bytes, 0, version);
  std::memcpy(bytes.data() + 4, "a bank", 7);
  std::memcpy(bytes.data() + kRecordsAt + kNameInRecord, "old", 4);
  setWord(bytes, kRecordsAt + kLevelInRecord, level);
  std::memcpy(bytes.data() + kRecordsAt + 128 * kOldRecord + kNameInRecord, "last", 5);
  return bytes;
}

TEST(ProgramBank, BeginsWithAllProgramsEqualToTheLiveValues) {
  Bank bank;
  const Bytes chunk = bank.state();
  ASSERT_EQ(chunk.size(), 158964U);
  EXPECT_EQ(wordAt(chunk, 0), 1U);
  EXPECT_EQ(wordAt(chunk, kRecordsAt + 1228), 100U);
  EXPECT_EQ(wordAt(chunk, kRecordsAt + 76 + 5 * 72), 5U) << "the wave of pad 5";
  for (std::size_t program = 1; program <= 128; ++program) {
    ASSERT_EQ(std::memcmp(chunk.data() + kRecordsAt, chunk.data() + kRecordsAt + program * 1232, 1232), 0) << program;
  }
}

TEST(ProgramBank, RestoresEveryValueInAnotherEngine) {
  Bank bank;
  for (std::uint32_t id = 0; id < 0x111; ++id) {
    bank.automate(0, id, static_cast<float>(id * 37 % 101) / 100.0F);
  }
  bank.process(1);
  bank.plugin.setProgramName("A name");
  bank.plugin.storeProgram(5);
  const Bytes chunk = bank.state();
  Bank other;
  other.plugin.setState(chunk);
  for (std::uint32_t id = 0; id < 0x111; ++id) {
    ASSERT_EQ(other.plugin.getParameter(id), bank.plugin.getParameter(id)) << id;
  }
  EXPECT_EQ(other.state(), chunk);
  EXPECT_EQ(other.plugin.programNameAt(5), "A name");
  bank.plugin.swapPrograms(5, 6);
  bank.plugin.storeProgram(7);
  EXPECT_EQ(other.state(), chunk) << "each has its own programs";
  bank.plugin.setState(chunk);
  EXPECT_EQ(bank.state(), chunk);
}

TEST(ProgramBank, UpgradesTheOlderChunkByItsSizeOrItsVersion) {
  for (const std::uint32_t version : {0U, 1U, 7U, 0xFFFFFFFFU}) {
    Bank bank;
    bank.plugin.setState(olderChunk(version, 42));
    EXPECT_EQ(bank.level(), 42.0F);
    EXPECT_EQ(bank.plugin.programName(), "old");
    EXPECT_EQ(bank.plugin.programNameAt(127), "last");
    const Bytes chunk = bank.state();
    EXPECT_EQ(wordAt(chunk, 0), 1U);
    EXPECT_STREQ(reinterpret_cast<const char*>(chunk.data() + 4), "a bank");
    for (std::size_t record = 0; record <= 128; ++record) {
      ASSERT_EQ(wordAt(chunk, kRecordsAt + record * 1232 + 1228), 100U) << record;
      ASSERT_EQ(wordAt(chunk, kRecordsAt + record * 1232), 1U) << record;
    }
  }
  for (const std::uint32_t version : {0U, 0xFFFFFFFFU}) {
    Bank bank;
    Bytes longer = olderChunk(version, 43);
    longer.resize(158964);
    bank.plugin.setState(longer);
    EXPECT_EQ(bank.level(), 43.0F);
  }
}

TEST(ProgramBank, LeavesItsStateAloneForWhatItCannotRead) {
  Bank bank;
  bank.setLevel(11);
  const Bytes good = bank.state();
  for (const std::size_t size : {0U, 1U, 3U, 4U, 36U, 1268U, 158447U, 158449U, 158963U}) {
    for (const std::uint32_t version : {0U, 1U, 2U, 0x80000000U}) {
      Bytes bytes(size, 0x55);
      if (size >= 4) {
        setWord(bytes, 0, version);
      }
      const bool isUpgrade = size == 158449 || size == 158963;
      if (isUpgrade && (version == 0 || version > 2)) {
        continue;
      }
      bank.plugin.setState(bytes);
      ASSERT_EQ(bank.state(), good) << size << ", version " << version;
    }
  }
  bank.plugin.setState({});
  EXPECT_EQ(bank.state(), good);
}

TEST(ProgramBank, AppliesTheEditBufferAgainForAnUnknownVersion) {
  Bank bank;
  bank.plugin.storeProgram(0);
  bank.setLevel(11);
  Bytes newer(200000);
  setWord(newer, 0, 2);
  bank.plugin.setState(newer);
  EXPECT_EQ(bank.level(), 100.0F);
}

TEST(ProgramBank, ChangesProgramsByMessageAndKeepsTheCurrentOne) {
  Bank bank;
  bank.setLevel(10);
  bank.plugin.storeProgram(3);
  bank.setLevel(20);
  bank.changeProgram(0);
  EXPECT_EQ(bank.level(), 20.0F) << "program 0 is current";
  bank.changeProgram(3);
  EXPECT_EQ(bank.level(), 10.0F);
  EXPECT_EQ(bank.plugin.currentProgram(), 3);
  bank.plugin.swapPrograms(3, 127);
  bank.changeProgram(200);
  EXPECT_EQ(bank.plugin.currentProgram(), 127);
  EXPECT_EQ(bank.level(), 10.0F);
}

TEST(ProgramBank, CutsNamesAndRefusesBadIndices) {
  Bank bank;
  bank.plugin.setProgramName(std::string(40, 'x'));
  EXPECT_EQ(bank.plugin.programName(), std::string(31, 'x'));
  const Bytes before = bank.state();
  for (const int index : {-1, 128, 1 << 30}) {
    bank.plugin.storeProgram(index);
    bank.plugin.swapPrograms(index, 0);
    bank.plugin.swapPrograms(0, index);
    EXPECT_EQ(bank.plugin.programNameAt(index), "");
  }
  EXPECT_EQ(bank.state(), before);
}

}  // namespace
