// The converter around an engine that counts its frames: what a host hears, and when the engine's messages arrive.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "ConverterScene.h"

namespace tesh::bramel::vst {
namespace {

using scene::Engine;
using scene::Events;
using scene::play;
using testing::ElementsAre;
using testing::Pair;

constexpr std::array<float, 10> kRates{1234.5678F, 8000.0F,  22050.0F, 44100.0F,  45678.901F,
                                       48000.0F,   88200.0F, 96000.0F, 192000.0F, 384000.0F};

TEST(Converter, GivesOneStreamHoweverItIsCutIntoBlocks) {
  for (const float rate : kRates) {
    constexpr std::size_t kFrames = 20000;
    const auto render = [rate](auto nextBlock) {
      Engine engine;
      CFsConverterWrapper converter(engine);
      converter.setSampleRate(rate);
      return play(converter, kFrames, nextBlock);
    };
    const auto whole = render([] { return kFrames; });
    EXPECT_EQ(whole, render([] { return std::size_t{1}; })) << rate;
    std::mt19937 random(3);
    EXPECT_EQ(whole, render([&random] { return std::size_t{1} + random() % 700; })) << rate;
    EXPECT_GT(*std::max_element(whole.begin(), whole.end()), 0.1F) << rate;
  }
}

TEST(Converter, HandsTheHostsInputToTheEngine) {
  for (const float rate : {48000.0F, 96000.0F, 192000.0F}) {
    Engine engine;
    engine.echoesInput = true;
    CFsConverterWrapper converter(engine);
    converter.setSampleRate(rate);
    std::vector<float> left(20000, 0.5F);
    std::vector<float> right(20000, -0.25F);
    std::array<float*, 2> outputs{left.data(), right.data()};
    converter.process(outputs.data(), outputs.data(), 20000);
    EXPECT_NEAR(left.back(), 0.5F, 1e-3F) << rate;
    EXPECT_NEAR(right.back(), -0.25F, 1e-3F) << rate;

    std::array<float*, 2> absent{nullptr, right.data()};
    converter.process(absent.data(), outputs.data(), 2000);
    EXPECT_EQ(left[1999], 0.0F) << rate;
    EXPECT_EQ(right[1999], 0.0F) << rate;
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

  // The rings have stayed as they were: another rate begins with their lead.
  converter.setSampleRate(48000.0F);
  converter.process(nullptr, outputs.data(), 64);
  EXPECT_THAT(std::vector<float>(samples.begin(), samples.begin() + 8), testing::Each(0.0F));
  EXPECT_NE(std::accumulate(samples.begin() + 8, samples.begin() + 64, 0.0F), 0.0F);
}

TEST(Converter, KeepsThePitchAndLevelOfASine) {
  for (const float rate : kRates) {
    if (rate < 8000.0F) {
      continue;
    }
    Engine engine;
    engine.sineHertz = 1000.0;
    CFsConverterWrapper converter(engine);
    converter.setSampleRate(rate);
    const auto frames = static_cast<std::size_t>(rate);
    const std::vector<float> heard = play(converter, frames, [] { return std::size_t{512}; });
    double first = 0.0;
    double last = 0.0;
    int periods = -1;
    float peak = 0.0F;
    for (std::size_t i = 200; i + 1 < frames; ++i) {
      peak = std::max(peak, std::abs(heard[i]));
      if (heard[i] < 0.0F && heard[i + 1] >= 0.0F) {
        last = static_cast<double>(i) + static_cast<double>(heard[i] / (heard[i] - heard[i + 1]));
        first = periods < 0 ? last : first;
        ++periods;
      }
    }
    const double hertz = static_cast<double>(periods) * static_cast<double>(rate) / (last - first);
    EXPECT_NEAR(hertz, 1000.0, 0.1) << rate;
    EXPECT_NEAR(peak, 0.5F, rate < 40000.0F ? 0.03F : 0.005F) << rate;
  }
}

TEST(Converter, RendersTheFramesOfItsRateOnAverage) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(48000.0F);
  play(converter, 480 * 100, [] { return std::size_t{480}; });
  EXPECT_NEAR(std::accumulate(engine.blocks.begin(), engine.blocks.end(), 0), 44100, 1);
  EXPECT_THAT(engine.blocks, testing::Each(testing::AllOf(testing::Ge(440), testing::Le(442))));
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

TEST(Converter, CountsMessagesInEngineFramesAndCarriesTheLateOver) {
  Engine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(48000.0F);
  Events events;
  events.add(479, {0x90, 36, 100});
  events.add(480 * 3, {0x80, 36, 0xFF});
  events.add(-7, {0xB0, 1, 2}, kVstSysExType);
  converter.processEvents(events.record());
  play(converter, 480, [] { return std::size_t{480}; });
  EXPECT_THAT(engine.messages, ElementsAre(Pair(0x90246400U, 440)));
  play(converter, 480 * 3, [] { return std::size_t{480 * 3}; });
  ASSERT_EQ(engine.blocks.size(), 2U);
  EXPECT_THAT(engine.messages, ElementsAre(Pair(0x90246400U, 440), Pair(0x8024FF00U, 1323 - engine.blocks[0])));
}

TEST(Converter, HoldsMessagesBehindALateOneAndTakesEarlyOnesAtOnce) {
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
