// A busy block with wave changes allocates nothing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CountedMemory.h"

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include "FrameScene.h"

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
  const int before = support::memoryCalls();
  playBusily(player);
  EXPECT_EQ(support::memoryCalls(), before);
}

}  // namespace

#endif
