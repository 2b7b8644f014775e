// The converter around a test engine: the sound that the host gets, and the times at which messages reach the engine.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "ConverterScene.h"
#include "PlainResampler.h"

namespace tesh::bramel::vst {
namespace {

using scene::Engine;
using scene::Events;
using scene::play;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct RateCase {
  float rate;
  std::int32_t downPhases;  ///< Fewer at high rates.
};

TEST(Converter, GivesTheBitsOfThePlainConverterInBlocksOfAnySize) {
  for (const auto& [rate, phases] : {RateCase{8000.0F, 16},
                                     {22050.0F, 16},
                                     {45678.901F, 16},
                                     {48000.0F, 16},
                                     {48001.0F, 8},
                                     {88200.0F, 8},
                                     {96000.0F, 8},
                                     {96001.0F, 4},
                                     {192000.0F, 4}}) {
    Engine engine;
    engine.echoesInput = true;
    CFsConverterWrapper converter(engine);
    converter.setSampleRate(rate);
    scene::PlainConverter plainLeft(static_cast<std::int32_t>(rate), phases);
    scene::PlainConverter plainRight = plainLeft;
    std::mt19937 random(3);
    std::uniform_real_distribution<float> noise(-0.5F, 0.5F);
    for (int block = 0; block < 60; ++block) {
      // Longer than the buffers: the sound of blocks 30 and 31 fills the ring, the silence of 37 to 39 empties it.
      const bool isLong = block == 30 || block == 31 || (block >= 37 && block <= 39);
      const std::size_t frames = isLong ? 17000 : 1 + random() % 600;
      std::vector<float> left(frames);
      std::vector<float> right(frames);
      const bool isAbsent = block % 20 > 15;  // without a left channel the host has no input
      if (!isAbsent) {
        std::generate(left.begin(), left.end(), [&] { return noise(random); });
        std::generate(right.begin(), right.end(), [&] { return block % 3 == 0 ? 0.0F : noise(random); });
      }
      std::size_t engineFrames = 0;
      const std::vector<float> expectedLeft = plainLeft.process(left, engineFrames);
      const std::vector<float> expectedRight = plainRight.process(right, engineFrames);
      std::array<float*, 2> outputs{left.data(), right.data()};
      std::array<float*, 2> inputs{isAbsent ? nullptr : left.data(), right.data()};
      const auto first = static_cast<std::ptrdiff_t>(engine.blocks.size());
      converter.process(inputs.data(), outputs.data(), static_cast<std::int32_t>(frames));
      ASSERT_EQ(left, expectedLeft) << rate << ", block " << block;
      ASSERT_EQ(right, expectedRight) << rate << ", block " << block;
      ASSERT_EQ(std::accumulate(engine.blocks.begin() + first, engine.blocks.end(), std::size_t{0}), engineFrames)
          << rate;
    }
  }
}

TEST(Converter, PlaysOnThroughChangesOfRateAndClearedRingsAsThePlainConverter) {
  constexpr std::array<RateCase, 5> kRates{
      {{48000.0F, 16}, {96000.0F, 8}, {44100.0F, 16}, {48000.0F, 16}, {8000.0F, 16}}};
  Engine engine;
  engine.echoesInput = true;
  CFsConverterWrapper converter(engine);
  scene::PlainConverter plain(44100, 16);
  std::mt19937 random(5);
  std::uniform_real_distribution<float> noise(-0.5F, 0.5F);
  for (int block = 0; block < 100; ++block) {
    const auto& [rate, phases] = kRates[static_cast<std::size_t>(block / 10 % 5)];
    if (block % 10 == 0) {
      converter.setSampleRate(rate);
      plain.setRate(static_cast<std::int32_t>(rate), phases);
    } else if (block % 10 == 5) {
      converter.reset();
      plain.clearWaiting();
    }
    std::vector<float> left(block == 3 || block == 4 ? 17000 : 1 + random() % 600);  // Two long ones fill the ring.
    std::generate(left.begin(), left.end(), [&] { return noise(random); });
    std::vector<float> right = left;
    std::size_t engineFrames = 0;
    const std::vector<float> expected = rate == 44100.0F ? left : plain.process(left, engineFrames);
    std::array<float*, 2> channels{left.data(), right.data()};
    converter.process(channels.data(), channels.data(), static_cast<std::int32_t>(left.size()));
    ASSERT_EQ(left, expected) << rate << ", block " << block;
    ASSERT_EQ(right, expected) << rate << ", block " << block;
  }
}

TEST(Converter, LetsTheEngineWriteIntoTheHostsBuffersAtItsOwnRate) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(44100.0F);
  std::vector<float> samples(2 * 21000);
  std::array<float*, 2> outputs{samples.data(), samples.data() + 21000};
  converter.process(nullptr, outputs.data(), 21000);
  EXPECT_EQ(engine.lastOutputs, outputs.data());
  EXPECT_THAT(engine.blocks, ElementsAre(21000));

  // The direct path does not change the rings; at another rate they start with their lead.
  converter.setSampleRate(48000.0F);
  converter.process(nullptr, outputs.data(), 64);
  EXPECT_THAT(std::vector<float>(samples.begin(), samples.begin() + 8), testing::Each(0.0F));
  EXPECT_NE(std::accumulate(samples.begin() + 8, samples.begin() + 64, 0.0F), 0.0F);
}

TEST(Converter, TellsItsListenerOfRateBlocksAndBrackets) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(88200.0F);
  converter.setBlockSize(7);
  play(converter, 100, [] { return std::size_t{100}; });
  EXPECT_THAT(engine.calls, ElementsAre("block 32", "longest 32", "rate 0.5", "block 32", "longest 32", "block 32",
                                        "longest 100", "begin", "process", "end"));
}

TEST(Converter, IgnoresRatesThatCannotBeAndCallsWithoutBuffers) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(48000.0F);
  engine.calls.clear();
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (const float rate : {0.0F, -48000.0F, 0.5F, kInfinity, -kInfinity, std::nanf("")}) {
    converter.setSampleRate(rate);
    EXPECT_EQ(converter.sampleRate(), 48000.0F);
  }
  float sample = 0.0F;
  std::array<float*, 2> outputs{&sample, nullptr};
  converter.process(nullptr, nullptr, 64);
  converter.process(nullptr, outputs.data(), 64);
  outputs[1] = &sample;
  converter.process(nullptr, outputs.data(), 0);
  converter.process(nullptr, outputs.data(), -5);
  EXPECT_TRUE(engine.calls.empty());

  for (const auto& [rate, frames] : {std::pair{3.0F, 5}, {100.0F, 200}, {1e6F, 20000}, {1e8F, 20000}}) {
    converter.setSampleRate(rate);
    EXPECT_THAT(play(converter, static_cast<std::size_t>(frames), [] { return std::size_t{17000}; }),
                testing::Each(testing::AllOf(testing::Ge(-2.0F), testing::Le(2.0F))))
        << rate;
  }
}

TEST(Converter, CutsMessagesDownToEngineFramesAndCarriesTheLateOver) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(88200.0F);  // 200 host frames are 100 engine frames
  Events events;
  events.add(199, {0x90, 36, 100});  // engine frame 99.5
  events.add(200, {0x90, 37, 100});
  events.add(651, {0x80, 36, 0xFF});
  events.add(-7, {0xB0, 1, 2}, kVstSysExType);
  converter.processEvents(events.record());
  const auto delivered = [&] {
    engine.messages.clear();
    play(converter, 200, [] { return std::size_t{200}; });
    return engine.messages;
  };
  EXPECT_THAT(delivered(), ElementsAre(Pair(0x90246400U, 99)));
  EXPECT_THAT(delivered(), ElementsAre(Pair(0x90256400U, 0)));
  EXPECT_THAT(delivered(), IsEmpty());
  EXPECT_THAT(delivered(), ElementsAre(Pair(0x8024FF00U, 25)));
}

TEST(Converter, KeepsTheLastFrameOfABlockInItAtTheEnginesRate) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  Events events;
  events.add(99, {0x90, 1, 1});
  events.add(100, {0x90, 2, 1});
  converter.processEvents(events.record());
  play(converter, 100, [] { return std::size_t{100}; });
  EXPECT_THAT(engine.messages, ElementsAre(Pair(0x90010100U, 99)));
  play(converter, 1, [] { return std::size_t{1}; });
  EXPECT_THAT(engine.messages, ElementsAre(Pair(0x90010100U, 99), Pair(0x90020100U, 0)));
}

TEST(Converter, HoldsMessagesBehindALateOneUntilTheyAreDroppedAndTakesEarlyOnesAtOnce) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  Events events;
  events.add(-50, {0x90, 1, 1});
  events.add(130, {0x90, 2, 1});
  events.add(10, {0x90, 3, 1});
  events.add(std::numeric_limits<std::int32_t>::max(), {0x90, 4, 1});
  events.add(std::numeric_limits<std::int32_t>::min(), {0x90, 5, 1});
  events.addNull();
  converter.processEvents(events.record());
  play(converter, 500, [] { return std::size_t{100}; });
  EXPECT_THAT(engine.messages, ElementsAre(Pair(0x90010100U, 0), Pair(0x90020100U, 30), Pair(0x90030100U, 0)));
  converter.dropEvents();
  converter.enter(0x90060100U, 7);
  engine.messages.clear();
  play(converter, 100, [] { return std::size_t{100}; });
  EXPECT_THAT(engine.messages, ElementsAre(Pair(0x90060100U, 7)));
}

TEST(Converter, DeliversTheOlderHalfOfAFullQueueEarly) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  Events events;
  for (std::int32_t i = 0; i < 1025; ++i) {
    events.add(100 + i, {0x90, static_cast<std::uint8_t>(i & 127), 1});
  }
  converter.processEvents(events.record());
  ASSERT_EQ(engine.messages.size(), 512U);
  EXPECT_EQ(engine.messages.front().second, 100);
  EXPECT_EQ(engine.messages.back().second, 611);
  play(converter, 2000, [] { return std::size_t{2000}; });
  ASSERT_EQ(engine.messages.size(), 1025U);
  EXPECT_EQ(engine.messages.back().second, 1124);
}

}  // namespace
}  // namespace tesh::bramel::vst
