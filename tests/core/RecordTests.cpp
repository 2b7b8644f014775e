// Small records and functions that all modules use, at the ends of their ranges.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <limits>
#include <thread>

#include "core/Boxed.h"
#include "core/FixedPoint.h"
#include "core/LittleEndian.h"
#include "core/LockFreeRing.h"
#include "core/MidiEvent.h"
#include "core/Truncate.h"
#include "core/Uuid.h"

namespace {

using namespace tesh::vimo;
using namespace tesh::cofu::core;
using testing::ElementsAre;

std::vector<std::uint8_t> bytesOf(const MidiEvent& event) { return {event.data(), event.data() + event.size()}; }

TEST(MidiEvent, HoldsShortLongAndProgramMessagesThroughCopies) {
  EXPECT_THAT(bytesOf(MidiEvent()), ElementsAre(0xF0, 0xF7));
  EXPECT_EQ(MidiEvent().status(), 0xF0);

  const std::vector<std::uint8_t> longMessage{0xF0, 1, 2, 3, 4, 5, 6, 7, 0xF7};
  MidiEvent copy(std::array<std::uint8_t, 3>{0x95, 36, 1}, 7);
  EXPECT_EQ(copy.status(), 0x90);
  EXPECT_EQ(copy.byteAt(3), 0);
  copy = MidiEvent(longMessage, 9);
  EXPECT_EQ(bytesOf(MidiEvent(copy)), longMessage);

  for (const auto& [channel, status] : {std::pair{-5, 0xC0}, {1, 0xC0}, {16, 0xCF}, {99, 0xCF}}) {
    const MidiEvent change = MidiEvent::programChange(channel, 0x85, 1000);
    EXPECT_THAT(bytesOf(change), ElementsAre(status, 5));
    EXPECT_EQ(change.program, 1000U);
  }
}

TEST(LockFreeRing, HoldsOneLessThanItsEntriesAndDropsTheRest) {
  LockFreeRing<int> ring(4);
  for (int lap = 0; lap < 5; ++lap) {
    EXPECT_TRUE(ring.put(1));
    EXPECT_TRUE(ring.put(2));
    EXPECT_TRUE(ring.put(3));
    EXPECT_FALSE(ring.put(4));
    EXPECT_EQ(*ring.peek(), 1);
    EXPECT_EQ(ring.take(), 1);
    EXPECT_EQ(ring.take(), 2);
    EXPECT_EQ(ring.take(), 3);
    EXPECT_EQ(ring.take(), std::nullopt);
  }
  EXPECT_FALSE(LockFreeRing<int>(0).put(1));
}

TEST(LockFreeRing, HandsRecordsFromThreadToThreadInOrder) {
  constexpr std::uint32_t kRecords = 20000;
  TimedValueRing ring(64);
  std::thread writer([&ring] {
    for (std::uint32_t i = 0; i < kRecords;) {
      if (ring.put({i, static_cast<float>(i), ~i, i})) {
        ++i;
      } else {
        std::this_thread::yield();
      }
    }
  });
  bool isWhole = true;
  for (std::uint32_t i = 0; i < kRecords;) {
    if (const auto record = ring.take()) {
      isWhole = isWhole && record->id == i && record->frame == ~i && record->object == i;
      ++i;
    } else {
      std::this_thread::yield();
    }
  }
  writer.join();
  EXPECT_TRUE(isWhole);
}

TEST(Boxed, ClonesDeeplyAndShowsItsTypeAlone) {
  const auto object = std::make_shared<int>(4);
  const boxed::holder<std::shared_ptr<int>> original(object);
  std::unique_ptr<boxed::holder_base> copy;
  original.clone(copy);
  EXPECT_EQ(object.use_count(), 3);
  ASSERT_NE(dynamic_cast<boxed::holder<std::shared_ptr<int>>*>(copy.get()), nullptr);
  EXPECT_EQ(dynamic_cast<boxed::holder<int>*>(copy.get()), nullptr);
}

TEST(FixedPoint, WrapsSaturatesAndLeaksAtTheEndsOfTheNumbers) {
  constexpr auto kLow = std::numeric_limits<std::int32_t>::min();
  constexpr auto kHigh = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(wrapAdd(kHigh, 1), kLow);
  EXPECT_EQ(wrapSub(kLow, 1), kHigh);
  EXPECT_EQ(wrapAbs(kLow), kLow);
  EXPECT_EQ(wrapMul(65536, 65536), 0);
  EXPECT_EQ(mulShift<2>(-1, 1), -1);
  EXPECT_EQ(mul15(65536, 32768), -65536);
  EXPECT_EQ(saturate(-32768), -32767);
  EXPECT_EQ(leak(1), -1);
  EXPECT_EQ(leak(-1), 0);
}

TEST(ByteReader, StaysFailedAfterAReadPastItsEnd) {
  const std::array<std::uint8_t, 6> bytes{1, 2, 3, 4, 5, 6};
  ByteReader reader(bytes);
  EXPECT_EQ(reader.word(), 0x04030201U);
  EXPECT_EQ(reader.word(), 0U);
  EXPECT_TRUE(reader.hasFailed());
  EXPECT_TRUE(reader.take(1).empty());
  EXPECT_EQ(wordIn(bytes, 2), 0x06050403U);
  EXPECT_EQ(wordIn(bytes, 3), std::nullopt);
  EXPECT_EQ(wordIn(bytes, ~std::uint64_t{0}), std::nullopt);
  EXPECT_THAT(bytesAt(bytes, 4, ~std::uint64_t{0}), ElementsAre(5, 6));
}

TEST(LittleEndian, ReadsATextFieldUpToItsFirstZero) {
  const std::array<std::uint8_t, 9> bytes{'a', 'b', 0, 'c', 'd', 'e', 'f', 'g', 'h'};
  ByteReader reader(bytes);
  EXPECT_EQ(reader.text(4), "ab");
  EXPECT_EQ(reader.text(4), "defg");
  EXPECT_EQ(reader.text(2), "");
  EXPECT_TRUE(reader.hasFailed());
}

TEST(Truncate, IsDefinedForEveryFloat) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(truncateToInt(-1.75F), -1);
  EXPECT_EQ(truncateToInt(2147483520.0F), 2147483520);  // The largest float below 2^31.
  EXPECT_EQ(truncateToInt(2147483648.0F), 2147483647);
  EXPECT_EQ(truncateToInt(-2147483648.0F), -2147483647 - 1);
  EXPECT_EQ(truncateToInt(-kInfinity), -2147483647 - 1);
  EXPECT_EQ(truncateToInt(std::numeric_limits<float>::quiet_NaN()), 0);
}

TEST(Uuid, IsOfVersionFourAndNeverTheSame) {
  const Uuid id = uuidFromDraws({0x000FEDCB, 0, 0xFFFFFFFF, 0x00012345});
  EXPECT_THAT(id, ElementsAre(0xCB, 0xDC, 0xED, 0xFE, 0, 0, 0x40, 0, 0xBF, 0xFF, 0xFF, 0xFF, 0x45, 0x34, 0x23, 0x12));
  EXPECT_NE(makeUuid(), makeUuid());
}

}  // namespace
