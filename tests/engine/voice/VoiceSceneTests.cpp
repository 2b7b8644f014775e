// Random scenes on every kernel against the plain model: samples, meters and voice counts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <random>

#include "PlainVoices.h"
#include "engine/voice/DrumCore.h"
#include "engine/voice/VoiceAllocator.h"
#include "support/SampleFolder.h"
#include "support/Sanitized.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::size_t kSlotFrames = 6000;
constexpr int kPads = 8;
constexpr std::array<std::int32_t, kPadParameterCount> kMaxima{0,   15,  1, 1, 48, 200, 127, 127, 127,
                                                               127, 127, 2, 1, 1,  1,   127, 127, 0};

class Scene {
 public:
  /// A calm scene has few voices, long waves and rare events, so that voices are at rest between them.
  Scene(support::SampleFolder& folder, unsigned seed, const VoiceKernel& kernel)
      : random(seed), connections(seed), calm(seed % 2 == 1), playedPads(calm ? pick(1, 3) : kPads) {
    makeWaves();
    folder.write(waves);
    file = std::make_unique<PcmFile>("SivrayPCM");
    core = std::make_unique<DrumCore>(*file, kPads, kSlotFrames);
    allocator = std::make_unique<VoiceAllocator>(*core, kPads);
    model = std::make_unique<plain::Engine>(waves, pads, kSlotFrames);
    for (int pad = 0; pad < kPads; ++pad) {
      allocator->setPad(pad, &pads[static_cast<std::size_t>(pad)]);
      for (std::size_t parameter = 1; parameter < kPadParameterCount; ++parameter) {
        setAtRandom(pad, parameter);
      }
      changeWave(pad);
    }
    core->makeVoices(*allocator, kernel);
  }

  /// Plays some events, then renders 0 to 2048 frames. Returns whether both sides agree.
  bool step() {
    for (int events = calm ? pick(0, 5) / 5 : pick(0, 5); events > 0; --events) {
      event();
    }
    if (--turnBackIn == 0) {
      turnBack();
    }
    constexpr std::array<int, 6> kLongest{1, 8, 64, 200, 700, 2048};
    const int frames = pick(0, kLongest[static_cast<std::size_t>(pick(0, calm ? 4 : 5))]);
    connectOuts();
    const bool feedsEffect = allocator->render({dry.data(), effect.data()}, frames, hasOuts ? &outs : nullptr);
    model->render(slow.data(), frames);
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames) * 4; ++i) {
      const std::int32_t fast = (i % 4 < 2 ? dry : effect)[i / 4 * 2 + i % 2];
      if (fast != slow[i]) {
        ADD_FAILURE() << "frame " << i / 4 << " of " << frames << ", channel " << i % 4 << ": " << fast << ", not "
                      << slow[i];
        return false;
      }
      EXPECT_TRUE(feedsEffect || i % 4 < 2 || slow[i] == 0);
      loudest = std::max(loudest, std::abs(fast));
    }
    return metersAgree() && outsAgree(frames);
  }

  int slices() const { return calm ? 200 : 60; }

  std::int32_t loudest = 0;

 private:
  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

  void makeWaves() {
    constexpr std::array<std::uint32_t, 6> kRates{44100, 22050, 48000, 32000, 96000, 11025};
    waves.resize(6);
    for (support::Wave& wave : waves) {
      wave.rate = kRates[static_cast<std::size_t>(pick(0, 5))];
      const int length = calm ? 7000 : pick(0, 3) == 0 ? pick(1, 20) : pick(1, 7000);
      const int loudness = pick(0, 2) == 0 ? 32767 : pick(0, 32767);
      fill(wave.left, length, loudness);
      if (pick(0, 1) == 1) {
        fill(wave.right, length, loudness);
      }
    }
  }

  void fill(std::vector<std::int16_t>& side, int length, int loudness) {
    const int held = pick(1, 60);  // Square-like waves test the low boost, noise the interpolation.
    for (int i = 0; i < length; ++i) {
      side.push_back(i % held == 0 ? static_cast<std::int16_t>(pick(-loudness - 1, loudness)) : side.back());
    }
  }

  void setAtRandom(int pad, std::size_t parameter) {
    const int maximum = kMaxima[parameter];
    int value = pick(0, maximum);
    if (pick(0, 3) == 0) {
      value = pick(0, 1) * maximum;
    }
    if (parameter == static_cast<std::size_t>(PadParameter::exAssign) && pick(0, 3) != 0) {
      value = 0;
    }
    if (parameter == static_cast<std::size_t>(PadParameter::egTime) && pick(0, 1) == 0) {
      value = calm || pick(0, 1) == 0 ? 127 : pick(0, 30);
    }
    pads[static_cast<std::size_t>(pad)].set(parameter, value);
  }

  void changeWave(int pad) {
    std::int32_t wave = pick(0, static_cast<int>(waves.size()) - 1);
    if (pick(0, 2) != 0) {  // Usually a wave is read ahead, sometimes not the one that is chosen.
      core->waves().fetch(static_cast<std::size_t>(pad), pick(0, 3) == 0 ? 0 : wave);
    }
    core->waveChange().setValue(pad, &wave);
    model->loadWave(static_cast<std::size_t>(pad), static_cast<std::size_t>(wave));
    pads[static_cast<std::size_t>(pad)].set(0, wave);
  }

  void event() {
    const int pad = pick(0, playedPads - 1);
    const int kind = pick(0, 99);
    if (kind < 40) {
      const int velocity = pick(1, 127);
      allocator->noteOn(36 + pad, velocity);
      model->noteOn(36 + pad, velocity);
    } else if (kind < 55) {
      allocator->noteOff(36 + pad);
      model->noteOff(36 + pad);
    } else if (kind < 94) {
      setAtRandom(pad, static_cast<std::size_t>(pick(1, 17)));
    } else if (kind < 97) {
      changeWave(pad);
    } else {
      allocator->resetVoices();
      model->reset();
      turnBackIn = pick(1, 3);
    }
  }

  /// Sets a level again after a reset, when low boost and pan are those of a cleared voice.
  void turnBack() {
    for (int pad = 0; pad < playedPads; ++pad) {
      setAtRandom(pad, static_cast<std::size_t>(PadParameter::level));
      pads[static_cast<std::size_t>(pad)].set(static_cast<std::size_t>(PadParameter::lowBoost), 0);
      pads[static_cast<std::size_t>(pad)].set(static_cast<std::size_t>(PadParameter::pan), 64);
    }
  }

  /// Connects no outputs, or some.
  void connectOuts() {
    hasOuts = connections() % 2 == 0;
    for (std::size_t pad = 0; pad < kPads; ++pad) {
      const bool isConnected = connections() % 4 != 0;
      outs[pad] = isConnected ? StereoOut{padSides[pad][0].data(), padSides[pad][1].data()} : StereoOut{};
    }
  }

  bool outsAgree(int frames) const {
    for (std::size_t pad = 0; hasOuts && pad < kPads; ++pad) {
      for (std::size_t word = 0; outs[pad].isConnected() && word < 2 * static_cast<std::size_t>(frames); ++word) {
        const float expected = static_cast<float>(model->heard[pad][word]) / 32768.0F;
        if (padSides[pad][word % 2][word / 2] != expected) {
          ADD_FAILURE() << "pad " << pad << ", frame " << word / 2 << " of " << frames << ": "
                        << padSides[pad][word % 2][word / 2] << ", not " << expected;
          return false;
        }
      }
    }
    return true;
  }

  bool metersAgree() {
    EXPECT_EQ(allocator->activeVoiceCount(), model->used);
    for (unsigned pad = 0; pad < kPads; ++pad) {
      EXPECT_EQ(allocator->padLevel(pad, 0), model->meters[0][pad]) << "pad " << pad;
      EXPECT_EQ(allocator->padLevel(pad, 1), model->meters[1][pad]) << "pad " << pad;
    }
    return !::testing::Test::HasFailure();
  }

  std::mt19937 random;
  std::mt19937 connections;  ///< A separate generator, so that outputs do not change the scenes.
  bool calm;
  int playedPads;
  int turnBackIn = 0;  ///< Steps until `turnBack`; none at 0 or below.
  std::vector<support::Wave> waves;
  std::array<PadValues, kPads> pads;
  std::unique_ptr<PcmFile> file;
  std::unique_ptr<DrumCore> core;
  std::unique_ptr<VoiceAllocator> allocator;
  std::unique_ptr<plain::Engine> model;
  std::array<std::int16_t, 2 * (2048 + kBusSlack)> dry{};
  std::array<std::int16_t, 2 * (2048 + kBusSlack)> effect{};
  std::array<std::int32_t, 2048 * 4> slow{};
  bool hasOuts = false;
  PadOuts outs;
  std::array<std::array<std::array<float, 2048>, 2>, kPads> padSides{};
};

TEST(VoiceScenes, EveryKernelPlaysRandomScenesAsThePlainModelDoes) {
  const char* wanted = std::getenv("SIVRAY_SCENES");  // for longer runs by hand
  const unsigned scenes = wanted == nullptr ? support::scenes(100U) : static_cast<unsigned>(std::atoi(wanted));
  support::SampleFolder folder;
  for (const VoiceKernel& kernel : voiceKernels()) {
    if (!platform::supports(kernel.needs)) {
      continue;
    }
    std::int32_t loudest = 0;
    for (unsigned seed = 0; seed < scenes; ++seed) {
      Scene scene(folder, seed, kernel);
      for (int slice = 0; slice < scene.slices(); ++slice) {
        ASSERT_TRUE(scene.step()) << kernel.name << ", scene " << seed << ", slice " << slice;
      }
      loudest = std::max(loudest, scene.loudest);
    }
    EXPECT_EQ(loudest, 32767) << kernel.name;
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
