// A busy instrument neither allocates nor frees memory.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CountedMemory.h"

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include "InstrumentScene.h"

namespace instrument {
namespace {

/// Plays notes, controllers, pitch bends, parameter writes, tempo changes and a program, in blocks of all kinds.
void playBusily(Player& player, std::uint32_t seed) {
  std::mt19937 random(seed);
  for (const std::int32_t frames : {64, 512, 1, 2049, 128}) {
    for (int i = 0; i < 100; ++i) {
      const std::array<std::uint8_t, 3> statuses{0x90, 0xB0, 0xE0};
      const std::array<std::uint8_t, 3> message{statuses[random() % 3], static_cast<std::uint8_t>(random() % 128),
                                                static_cast<std::uint8_t>(random() % 128)};
      player.shell->sendMidi(message.data(), message.size(), static_cast<std::int32_t>(random() % 600));
      player.shell->setParameter(random() % kPadValues, static_cast<float>(random() % 128) / 127.0F);
    }
    player.shell->setTempo(static_cast<float>(60 + random() % 200));
    player.left.clear();
    player.right.clear();
    player.play(frames);
  }
}

TEST(AudioThread, AllocatesAndFreesNothing) {
  const support::SampleFolder folder(support::assortedWaves(12, 900));
  for (const float rate : {44100.0F, 48000.0F}) {
    Player player(makeInstrument());
    player.reserve(4096);
    player.shell->setSampleRate(rate);
    playBusily(player, 1);
    const int before = support::memoryCalls();
    playBusily(player, 2);
    EXPECT_EQ(support::memoryCalls(), before) << rate;
  }
}

TEST(AudioThread, MemoryStaysTheSameHoweverLongAHostWritesAndReadsWithoutAudio) {
  const support::SampleFolder folder(support::assortedWaves(12, 900));
  Player player(makeInstrument());
  player.reserve(1024);
  const auto flood = [&player] {
    for (std::uint32_t i = 0; i < 30000; ++i) {
      player.shell->setParameter(i % kPadValues, static_cast<float>(i % 100) / 99.0F);
    }
    for (std::uint32_t i = 0; i < 30000; ++i) {
      player.shell->setParameter(kPadValues, static_cast<float>(i % 100) / 99.0F);
      player.shell->parameterValue(kPadValues);
    }
    player.play(64);
  };
  flood();
  const int before = support::memoryCalls();
  flood();
  EXPECT_LT(support::memoryCalls(), before + 100) << "the pool of mail may meet its peak here, but no more";
}

}  // namespace
}  // namespace instrument

#endif
