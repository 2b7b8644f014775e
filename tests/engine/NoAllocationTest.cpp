// A busy block asks for no memory, wave changes included.
// SPDX-License-Identifier: GPL-3.0-or-later
// The sanitizers bring their own operators, which cannot be replaced or must not be mixed with ours.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer) || __has_feature(address_sanitizer)
#define SIVRAY_FIXED_OPERATORS
#endif
#endif
#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "FrameScene.h"

namespace {

std::atomic<int> allocations{0};

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace scene;

void playBusily(Player& player) {
  for (int block = 0; block < 20; ++block) {
    for (std::uint32_t i = 0; i < 60; ++i) {
      player.automate(i * 8, parameterId(i % 8, (i + static_cast<std::uint32_t>(block)) % 16),
                      static_cast<float>(i) / 60.0F);
      player.midi.emplace_back(std::array<std::uint8_t, 3>{0x90, static_cast<std::uint8_t>(36 + i % 8), 90}, i * 8);
    }
    player.automate(500, 0x100, static_cast<float>(block) / 20.0F);
    player.plugin.tempoChanged(100 + block);
    player.process(512);
  }
}

TEST(Frame, AllocatesNothingWhilePlaying) {
  Player player;
  openMaster(player);
  playBusily(player);
  const int before = allocations;
  playBusily(player);
  EXPECT_EQ(allocations, before);
}

}  // namespace

#endif
