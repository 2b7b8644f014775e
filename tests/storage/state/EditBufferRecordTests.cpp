// The state's envelope: its exact bytes, and the handling of bytes that are no state.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/state/EditBufferRecord.h"

#include <gmock/gmock.h>

namespace tesh::bramel::vst {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes join(std::initializer_list<std::string> parts) {
  Bytes bytes;
  for (const std::string& part : parts) {
    bytes.insert(bytes.end(), part.begin(), part.end());
  }
  return bytes;
}

TEST(EditBufferRecord, IsATaggedMapOfSmallestEncodingsSortedByKey) {
  const Bytes expected =
      join({"MPck\x83\xA7"
            "content\xC4\x03"
            "abc\xA4"
            "name\xBD",
            kEditBufferName, "\xA7version\x01"});
  const EditBufferRecord record{kEditBufferName, 1, {'a', 'b', 'c'}};
  EXPECT_EQ(packState(record), expected);
}

TEST(EditBufferRecord, ComesBackWithAContentOfEverySizeClass) {
  for (const std::size_t size : {0U, 255U, 256U, 65535U, 65536U, 300000U}) {
    const EditBufferRecord record{kEditBufferName, 1, Bytes(size, 7)};
    const auto back = unpackState(packState(record));
    ASSERT_TRUE(back.has_value()) << size;
    EXPECT_EQ(back->content, record.content);
    EXPECT_EQ(back->name, record.name);
  }
}

TEST(EditBufferRecord, TakesTheContentAsTextAndPassesOverOtherKeys) {
  const auto record =
      unpackState(join({"MPck\x84\xA5other\x05\xA7version\x01\xA4name\xA1x\xA7"
                        "content\xA2hi"}));
  ASSERT_TRUE(record.has_value());
  EXPECT_THAT(record->content, testing::ElementsAre('h', 'i'));
}

TEST(EditBufferRecord, RefusesEveryTruncationAndEveryLie) {
  const Bytes whole = packState({kEditBufferName, 1, Bytes(300, 1)});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(unpackState(std::span(whole).first(size)).has_value()) << size;
  }
  const std::vector<std::string> lies{"MPck\xC0",
                                      "MPck\xDF\xFF\xFF\xFF\xFF",
                                      "MPck\xDD\xFF\xFF\xFF\xFF",
                                      "MPck\xC6\xFF\xFF\xFF\xFF",
                                      "MPck\x83\xA7version\xFF\xA4name\xA1x\xA7"
                                      "content\xA2hi",
                                      "MPck" + std::string(5000, '\x91')};
  for (const std::string& lie : lies) {
    EXPECT_FALSE(unpackState(join({lie})).has_value());
  }
}

}  // namespace
}  // namespace tesh::bramel::vst
