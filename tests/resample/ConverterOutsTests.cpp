// The outputs other than the main one through the converter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <span>
#include <vector>

#include "host/resample/CFsConverterWrapper.h"

namespace tesh::bramel::vst {
namespace {

constexpr std::size_t kOuts = CFsConverterWrapper::kOuts;
constexpr std::size_t kAllChannels = CFsConverterWrapper::kMostChannels;

/// Plays noise on the main output and on every second other one; the rest is silent.
class NoiseEngine final : public CFsConvListener {
 public:
  void onProcess(float** /*inputs*/, std::span<float*> outputs, std::int32_t frames) override {
    for (std::int32_t i = 0; i < frames; ++i) {
      const float sample = isQuiet ? 0.0F : noise(random);
      for (std::size_t channel = 0; channel < outputs.size(); ++channel) {
        const bool isSilent = channel >= 2 && channel / 2 % 2 == 0;
        if (outputs[channel] != nullptr) {
          outputs[channel][i] = isSilent ? 0.0F : channel % 2 == 0 ? sample : -sample;
        }
      }
    }
  }

  bool isQuiet = false;

 private:
  std::mt19937 random{9};
  std::uniform_real_distribution<float> noise{-0.5F, 0.5F};
};

TEST(ConverterOuts, RunAtThePhaseOfTheMainOutWheneverTheyAreConnected) {
  for (const float rate : {44100.0F, 48000.0F, 22050.0F, 96000.0F, 12345.6F}) {
    NoiseEngine engine;
    NoiseEngine otherEngine;
    CFsConverterWrapper converter(engine);
    CFsConverterWrapper mainAlone(otherEngine);
    converter.setSampleRate(64000.0F);
    converter.makeOuts();
    converter.setSampleRate(rate);
    mainAlone.setSampleRate(rate);
    // The past of the main output that another output has missed: the filter's taps, and the ring's lead.
    const auto missed = rate == 44100.0F ? 0 : static_cast<std::size_t>(std::ceil(24.0F * rate / 44100.0F)) + 10;
    std::array<std::size_t, kOuts> connectedFor{};
    std::mt19937 random(4);
    for (int block = 0; block < 250; ++block) {
      const std::size_t frames = block == 100 ? 17000 : 1 + random() % 400;
      std::vector<std::vector<float>> samples(kAllChannels, std::vector<float>(frames, 9.0F));
      std::array<float*, kAllChannels> outputs{samples[0].data(), samples[1].data()};
      for (std::size_t out = 0; out < kOuts; ++out) {
        const bool isConnected = (random() % 20 == 0) != (connectedFor[out] > 0);
        connectedFor[out] = isConnected ? connectedFor[out] : 0;
        for (std::size_t channel = 2 * out + 2; isConnected && channel < 2 * out + 4; ++channel) {
          outputs[channel] = samples[channel].data();
        }
      }
      converter.processOuts(nullptr, outputs, static_cast<std::int32_t>(frames));

      std::vector<float> left(frames);
      std::vector<float> right(frames);
      std::array<float*, 2> both{left.data(), right.data()};
      mainAlone.process(nullptr, both.data(), static_cast<std::int32_t>(frames));
      ASSERT_EQ(samples[0], left) << rate;
      ASSERT_EQ(samples[1], right) << rate;
      for (std::size_t out = 0; out < kOuts; ++out) {
        if (outputs[2 * out + 2] == nullptr) {
          ASSERT_EQ(samples[2 * out + 2], std::vector<float>(frames, 9.0F));
          continue;
        }
        for (std::size_t channel = 2 * out + 2; channel < 2 * out + 4; ++channel) {
          const std::size_t from = std::min(frames, missed - std::min(missed, connectedFor[out]));
          const auto& expected = channel % 2 == 0 ? left : right;
          const std::vector<float> silence(frames);
          ASSERT_TRUE(std::equal(samples[channel].begin() + static_cast<std::ptrdiff_t>(from), samples[channel].end(),
                                 (out % 2 == 0 ? expected : silence).begin() + static_cast<std::ptrdiff_t>(from)))
              << rate << ", block " << block << ", out " << out << ", after " << connectedFor[out];
          if (connectedFor[out] == 0 && missed > 0) {
            ASSERT_EQ(samples[channel][0], 0.0F) << "no sound from before";
          }
        }
        connectedFor[out] += frames;
      }
    }
  }
}

TEST(ConverterOuts, HoldNothingOfWhatTheyPlayedWhenTheyAreConnectedAgain) {
  NoiseEngine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(48000.0F);
  converter.makeOuts();
  std::vector<std::vector<float>> samples(4, std::vector<float>(500));
  std::array<float*, kAllChannels> outputs{samples[0].data(), samples[1].data()};
  for (const bool isConnected : {true, false, true}) {
    outputs[2] = isConnected ? samples[2].data() : nullptr;
    outputs[3] = isConnected ? samples[3].data() : nullptr;
    converter.processOuts(nullptr, outputs, 500);
    EXPECT_EQ(samples[2] == std::vector<float>(500), engine.isQuiet && isConnected);
    engine.isQuiet = true;
  }
}

TEST(ConverterOuts, AreSilentAwayFromTheEnginesRateUntilTheyAreMade) {
  NoiseEngine engine;
  CFsConverterWrapper converter(engine);
  converter.setSampleRate(48000.0F);
  std::vector<std::vector<float>> samples(kAllChannels, std::vector<float>(500, 9.0F));
  std::array<float*, kAllChannels> outputs{};
  std::transform(samples.begin(), samples.end(), outputs.begin(), [](auto& channel) { return channel.data(); });
  converter.processOuts(nullptr, outputs, 500);
  EXPECT_NE(samples[0][499], 0.0F);
  EXPECT_TRUE(std::all_of(samples.begin() + 2, samples.end(),
                          [](const auto& channel) { return channel == std::vector<float>(500); }));
}

}  // namespace
}  // namespace tesh::bramel::vst
