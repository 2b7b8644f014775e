// The outputs other than the main one: their content, and that they leave the main one unchanged.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "FrameScene.h"
#include "engine/OutputStage.h"

namespace {

using namespace scene;
using tesh::vimo::kAllChannels;
using tesh::vimo::kMainChannels;
using tesh::vimo::kPadChannels;

constexpr std::size_t kChannels = kAllChannels;
constexpr std::size_t kEffectChannel = kMainChannels + kPadChannels;
constexpr int kLongest = 5000;
constexpr std::uint32_t kEffectType = 0x100;
constexpr float kBypass = 0.0F;
constexpr float kDrive = 19.0F / 29.0F;

/// A player with ten stereo outputs, any of which may be missing.
struct OutsPlayer : Player {
  OutsPlayer() : Player(kWaves, 3000), samples(kChannels, std::vector<float>(kLongest)) { openMaster(*this); }

  void play(int frames, const std::vector<bool>& isConnected) {
    std::array<float*, kChannels> outputs{};
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
      std::fill(samples[channel].begin(), samples[channel].end(), 9.0F);
      outputs[channel] = isConnected[channel / 2] ? samples[channel].data() : nullptr;
    }
    tesh::vimo::ProcessBlock block;
    block.outputs = outputs.data();
    block.outputCount = kAllChannels;
    block.frames = frames;
    block.midiIn = &midi;
    block.automationRing = &ring;
    plugin.process(block);
    midi.clear();
  }

  std::vector<std::vector<float>> samples;
};

TEST(Outs, LeaveTheMainOutAsItIsWhicheverAreConnected) {
  std::mt19937 random(5);
  const auto below = [&random](int end) { return std::uniform_int_distribution<int>(0, end - 1)(random); };
  Player alone(kWaves, 3000);
  openMaster(alone);
  OutsPlayer player;
  float loudest = 0.0F;
  for (int block = 0; block < 300; ++block) {
    const int frames = 1 + below(block % 50 == 0 ? kLongest : 700);
    for (int events = below(4); events > 0; --events) {
      const auto frame = static_cast<std::uint32_t>(below(frames));
      const int key = 36 + below(8);
      const std::uint32_t id = static_cast<std::uint32_t>(below(8)) << 4U | static_cast<std::uint32_t>(below(15));
      const float value = static_cast<float>(below(128)) / 127.0F;
      const float type = static_cast<float>(below(30)) / 29.0F;
      for (Player* each : {&alone, static_cast<Player*>(&player)}) {
        each->note(frame, key);
        if (id % 16 != 0) {
          each->automate(frame, id, value);
        }
        if (block % 40 == 39) {
          each->automate(frame, kEffectType, type);
        }
      }
    }
    std::vector<bool> isConnected{true};
    for (int pair = 1; pair < 10; ++pair) {
      isConnected.push_back(below(3) != 0);
    }
    alone.process(frames);
    player.play(frames, isConnected);
    for (std::size_t frame = 0; frame < static_cast<std::size_t>(frames); ++frame) {
      ASSERT_EQ(player.samples[0][frame], alone.left[frame]) << block;
      ASSERT_EQ(player.samples[1][frame], alone.right[frame]) << block;
      loudest = std::max(loudest, std::abs(alone.left[frame]));
      for (std::size_t channel = 2; channel < kChannels; ++channel) {
        ASSERT_EQ(player.samples[channel][frame] == 9.0F, !isConnected[channel / 2]) << "each frame is written";
      }
    }
  }
  EXPECT_GT(loudest, 0.5F);
  player.plugin.activate();
  for (int block = 0; block < 8; ++block) {
    player.play(700, std::vector<bool>(10, true));
  }
  for (const auto& channel : player.samples) {
    EXPECT_EQ(channel[699], 0.0F) << "also where nothing sounds";
  }
}

/// The target for level 100 is a gain of 16010; a glide step (g * 32665 + 16010 * 102) >> 15 no longer raises this
/// gain.
constexpr std::int32_t kGain = (16010 * 102 - 32768) / 103 + 1;

// An open gate multiplies by 32767 / 32768 and rounds down, which is at most one unit of 1 / 32768 for each voice. The
// output stage then amplifies by less than 1.3 and rounds twice.
TEST(Outs, AddUpToTheMainOutThroughSendsAndOutputStage) {
  constexpr std::uint32_t kGroupOfPad3 = 0x31;
  for (const float type : {kBypass, kDrive}) {
    OutsPlayer player;
    player.set(kEffectType, type);
    std::array<bool, 8> isSent{};
    for (std::uint32_t pad = 0; pad < 8; ++pad) {
      isSent[pad] = pad % 3 == 1;
      player.automate(0, pad << 4U | 13U, isSent[pad] ? 1.0F : 0.0F);
      player.automate(0, pad << 4U | 8U, 0.5F);  // Quiet, so that no sum is clipped.
      player.note(0, 36 + static_cast<int>(pad));
    }
    player.automate(0, kGroupOfPad3, 1.0F);
    const std::vector<bool> all(10, true);
    player.play(1024, all);  // The gates are moving.
    player.automate(0, kGroupOfPad3 + 0x20, 1.0F);
    player.note(100, 36 + 5);  // Pad 5 plays in its own lane and in that of pad 3, whose group it has joined.
    player.play(1500, all);
    float loudest = 0.0F;
    for (std::size_t frame = 0; frame < 1500; ++frame) {
      for (std::size_t side = 0; side < 2; ++side) {
        float dry = 0.0F;
        float sent = 0.0F;
        for (std::size_t pad = 0; pad < 8; ++pad) {
          (isSent[pad] ? sent : dry) += player.samples[kMainChannels + 2 * pad + side][frame];
        }
        const float wet = player.samples[kEffectChannel + side][frame];
        const auto words = [](float sample) { return static_cast<std::int32_t>(sample * 32768.0F); };
        EXPECT_NEAR(outputSample(words(dry), words(wet), kGain), player.samples[side][frame],
                    (5 * 1.3F + 2) / 32768.0F);
        if (type == kBypass) {
          EXPECT_NEAR(wet, sent, 4 / 32768.0F);
        }
        loudest = std::max(loudest, std::min(std::abs(dry), std::abs(wet)));
      }
    }
    EXPECT_GT(loudest, 0.005F) << "both buses are heard";
  }
}

TEST(Outs, CarryEachPadAlone) {
  OutsPlayer player;
  for (int pad = 0; pad < 8; ++pad) {
    player.note(0, 36 + pad);
    player.play(800, std::vector<bool>(10, true));
    player.message(0, {0xB0, 123, 0});
    for (std::size_t pair = 1; pair < 9; ++pair) {
      const auto& left = player.samples[2 * pair];
      const bool isHeard = std::any_of(left.begin(), left.begin() + 800, [](float x) { return x != 0.0F; });
      EXPECT_EQ(isHeard, pair == static_cast<std::size_t>(pad) + 1) << pad;
    }
    player.plugin.deactivate();
    player.plugin.activate();
  }
}

}  // namespace
