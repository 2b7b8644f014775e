// The CLAP plug-in's outputs other than the main one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "clap/ClapScene.h"

namespace clap {
namespace {

/// Plays a note on the first two pads into ten outputs, any of which may be missing. Returns the largest sample of each
/// output, or -1 if nothing was written to it.
std::vector<float> loudestOfOuts(Instance& plugin, const std::vector<bool>& isGiven) {
  constexpr std::size_t kFrames = 512;
  constexpr float kUntouched = -7.0F;
  std::vector<Samples> samples(2 * isGiven.size(), Samples(kFrames, kUntouched));
  std::vector<std::array<float*, 2>> channels(isGiven.size());
  std::vector<AudioBuffer> outputs(isGiven.size());
  for (std::size_t out = 0; out < isGiven.size(); ++out) {
    channels[out] = {samples[2 * out].data(), samples[2 * out + 1].data()};
    outputs[out] = isGiven[out] ? AudioBuffer{channels[out].data(), nullptr, 2, 0, 3} : AudioBuffer{};
  }
  plugin.note(EventType::noteOn, 36, 0);
  plugin.note(EventType::noteOn, 37, 9);
  plugin.events.addValue(kMaster, nullptr, 1.0, 300);  // Splits the block.
  const Process block{0,
                      kFrames,
                      nullptr,
                      nullptr,
                      outputs.data(),
                      0,
                      static_cast<std::uint32_t>(outputs.size()),
                      plugin.events.list(),
                      nullptr};
  EXPECT_EQ(plugin.plugin->process(plugin.plugin, &block), ProcessStatus::proceed);
  plugin.events.clear();
  std::vector<float> loudest;
  for (std::size_t out = 0; out < isGiven.size(); ++out) {
    const Samples& left = samples[2 * out];
    const bool isWritten = std::ranges::count(left, kUntouched) == 0;
    EXPECT_TRUE(isWritten || std::ranges::count(left, kUntouched) == kFrames) << "all of it, or nothing";
    loudest.push_back(isWritten ? std::abs(std::ranges::max(left, {}, [](float x) { return std::abs(x); })) : -1.0F);
  }
  return loudest;
}

TEST_F(Clap, EachPadHasAnOutThatTheHostMayLeaveOut) {
  for (const double rate : {44100.0, 48000.0}) {
    Instance plugin;
    plugin.started(rate);
    const auto& ports = plugin.extension<AudioPorts>(kAudioPorts);
    ASSERT_EQ(ports.count(plugin.plugin, false), 10U);
    EXPECT_EQ(ports.count(plugin.plugin, true), 0U);
    AudioPortInfo info;
    ASSERT_TRUE(ports.get(plugin.plugin, 8, false, &info));
    EXPECT_STREQ(info.name, "Pad 8");
    EXPECT_EQ(info.flags, 0U);
    EXPECT_FALSE(ports.get(plugin.plugin, 10, false, &info));

    std::vector<bool> isGiven(10, true);
    auto loudest = loudestOfOuts(plugin, isGiven);
    EXPECT_GT(loudest[1], 0.01F) << rate;
    EXPECT_GT(loudest[2], 0.01F);
    EXPECT_EQ(std::vector<float>(loudest.begin() + 3, loudest.begin() + 9), std::vector<float>(6));
    isGiven[1] = isGiven[5] = false;
    loudest = loudestOfOuts(plugin, isGiven);
    EXPECT_EQ(loudest[1], -1.0F);
    EXPECT_EQ(loudest[5], -1.0F);
    EXPECT_GT(loudest[2], 0.01F);

    const auto& activation = plugin.extension<AudioPortsActivation>(kAudioPortsActivation);
    EXPECT_TRUE(activation.canActivateWhileProcessing(plugin.plugin));
    for (const bool isActive : {false, true}) {
      EXPECT_TRUE(activation.setActive(plugin.plugin, false, 2, isActive, 32));
      EXPECT_TRUE(activation.setActive(plugin.plugin, false, 0, false, 32)) << "the main one always sounds";
      loudest = loudestOfOuts(plugin, std::vector<bool>(10, true));
      EXPECT_GT(loudest[0], 0.01F);
      EXPECT_EQ(loudest[2] > 0.01F, isActive);
      EXPECT_EQ(loudest[2] == -1.0F, !isActive);
    }
    EXPECT_FALSE(activation.setActive(plugin.plugin, false, 10, true, 32));
    EXPECT_FALSE(activation.setActive(plugin.plugin, true, 0, true, 32));
  }
}

}  // namespace
}  // namespace clap
