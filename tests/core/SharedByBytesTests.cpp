// Objects that are shared between all users of the same bytes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "core/SharedByBytes.h"

namespace tesh::cofu::core {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(SharedByBytes, MakesOneObjectOfEqualBytesForAsLongAsItIsHeld) {
  SharedByBytes<std::string> shared;
  int made = 0;
  const auto get = [&](const Bytes& bytes) {
    return shared.get(bytes, [&made](std::span<const std::uint8_t> given) {
      ++made;
      return std::string(given.begin(), given.end());
    });
  };
  auto first = get({'a', 'b'});
  EXPECT_EQ(get({'a', 'b'}), first);
  EXPECT_EQ(*get({'a'}), "a") << "a beginning of other bytes";
  EXPECT_EQ(*get({}), "");
  EXPECT_EQ(*first, "ab");
  EXPECT_EQ(made, 3);
  first.reset();
  EXPECT_EQ(*get({'a', 'b'}), "ab");
  EXPECT_EQ(made, 4);
}

TEST(SharedByBytes, ForgetsWhatCouldNotBeMade) {
  SharedByBytes<int> shared;
  const Bytes bytes{1};
  EXPECT_THROW(shared.get(bytes, [](auto) -> int { throw std::runtime_error("no"); }), std::runtime_error);
  EXPECT_EQ(*shared.get(bytes, [](auto) { return 5; }), 5);
}

TEST(SharedByBytes, GivesThreadsTheSame) {
  SharedByBytes<int> shared;
  const auto held = shared.get(Bytes{7}, [](auto) { return 7; });
  std::atomic<int> others{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (std::uint8_t round = 0; round < 100; ++round) {
        const auto own = shared.get(Bytes{round}, [](auto bytes) { return int{bytes[0]}; });
        others += *own != round || (round == 7 && own != held) ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(others, 0);
}

}  // namespace
}  // namespace tesh::cofu::core
