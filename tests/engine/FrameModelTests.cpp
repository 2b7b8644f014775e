// Random scenes through the whole engine against the plain model, to the bit.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <random>

#include "FrameScene.h"
#include "PlainFrame.h"

namespace {

using namespace scene;

class RandomScene {
 public:
  /// A quiet scene has few notes, so that the effect becomes silent between them.
  explicit RandomScene(unsigned seed) : random(seed), quiet(seed % 2 == 1), model(kWaves, kSlot) {
    player.plugin.setParameter(kMasterOut, 100.0F / 127.0F);
    model.queue({0, 0, kMasterOut, 100.0F / 127.0F, {}});
    restart(true);
  }

  void restart(bool isActive) {
    isActive ? player.plugin.activate() : player.plugin.deactivate();
    model.reset();
  }

  bool playBlock() {
    constexpr std::array<int, 6> kLongest{1, 9, 64, 128, 700, 2048};
    const int frames = pick(0, 6) == 0 ? 128 : pick(1, kLongest[static_cast<std::size_t>(pick(quiet ? 3 : 0, 5))]);
    if (pick(0, 39) == 0) {
      restart(pick(0, 1) == 0);
    }
    // Messages are sent before automation, as in the frame. Some records are beyond the end of the block.
    for (int i = quiet && pick(0, 9) != 0 ? 0 : pick(0, 4); i > 0; --i) {
      queueMessage(frameOf(frames));
    }
    for (int i = pick(0, 4); i > 0; --i) {
      queueAutomation(pick(0, 5) == 0 ? pick(0, frames + 200) : frameOf(frames));
    }
    if (pick(0, 9) == 0) {
      const int bpm = pick(20, 300);
      player.plugin.tempoChanged(bpm);
      model.queue({0, 2, 0, static_cast<float>(bpm / 300.0), {}});
    }
    return sameFor(frames);
  }

  /// Waits until an effect is silent, turns a knob at the very end of a block, and starts the next block with a note,
  /// sometimes after a restart. Returns whether both sides agree.
  bool turnKnobAtBorder(int type) {
    automate(0, 0x100, static_cast<float>(type) / 29.0F);
    automate(0, 0x102, static_cast<float>(pick(60, 127)) / 127.0F);
    bool same = true;
    for (int block = 0; block < 80 && same; ++block) {
      same = sameFor(2048);
    }
    automate(64, 0x102, 20.0F / 127.0F);
    same = same && sameFor(64);
    if (pick(0, 1) == 0) {
      message(0, {0xF4, 3, 0});
    }
    message(0, {0x90, 36, 100});
    return same && sameFor(2048);
  }

  bool sounded = false;

 private:
  bool sameFor(int frames) {
    player.process(frames);
    model.process(frames, left, right);
    const bool isSounding = player.firstSound() >= 0;
    sounded = sounded || isSounding;
    return player.left == left && player.right == right && !(isSounding && player.isToldSilent) && metersAgree();
  }

  bool metersAgree() const {
    bool same = true;
    for (std::uint32_t pad = 0; pad < 8; ++pad) {
      for (std::uint32_t side = 0; side < 2; ++side) {
        const std::uint32_t id = parameterId(kFirstMeterGroup + pad, side);
        same = same && player.plugin.getParameter(id) == model.meter(pad, side);
      }
    }
    return same;
  }

  void message(int frame, std::array<int, 3> bytes) {
    player.message(static_cast<std::uint32_t>(frame), {bytes[0], bytes[1], bytes[2]});
    model.queue({frame, 1, 0, 0.0F, bytes});
  }

  void automate(int frame, std::uint32_t id, float value) {
    player.automate(static_cast<std::uint32_t>(frame), id, value);
    model.queue({frame, 0, id, value, {}});
  }

  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

  /// Returns any frame of the block, often its first or last one.
  int frameOf(int frames) {
    const int last = frames - 1;
    return pick(0, 2) == 0 ? pick(0, 1) * last : pick(0, last);
  }

  void queueMessage(int frame) {
    constexpr std::array<int, 8> kStatus{0x90, 0x90, 0x99, 0x93, 0x80, 0xBF, 0xF4, 0xE0};
    const int status = kStatus[static_cast<std::size_t>(pick(0, 7))];
    int first = pick(34, 45);
    if (status == 0xBF) {
      first = pick(119, 127);
    } else if (status == 0xF4) {
      first = pick(0, 4);
    }
    const int second = pick(0, 9) == 0 ? 0 : pick(1, 127);
    message(frame, {status, first, second});
  }

  void queueAutomation(int frame) {
    std::uint32_t id = static_cast<std::uint32_t>(pick(0, 7) << 4 | pick(0, 15));
    const int other = pick(0, 9);
    if (other < 3) {
      id = static_cast<std::uint32_t>(0x100 + pick(0, 4));
    } else if (other == 3) {
      id = pick(0, 1) == 0 ? kMasterOut : kTempo;
    }
    const float highest = id == kMasterOut ? 2.0F : 1.0F;  // The lower seven bits of a level select the gain.
    automate(frame, id, highest * static_cast<float>(pick(0, 1000)) / 1000.0F);
  }

  std::mt19937 random;
  bool quiet;
  Player player;
  plain::Frame model;
  std::vector<float> left;
  std::vector<float> right;
};

TEST(Frame, RendersRandomScenesAsThePlainModelDoesWithEverySetOfInstructions) {
  using namespace tesh::bramel::platform;
  constexpr std::array<VectorSet, 4> kSets{VectorSet::none, VectorSet::baseline, VectorSet::sse41, VectorSet::avx2};
  for (unsigned seed = 0; seed < 24; ++seed) {
    const VectorLimit limit(kSets[seed % kSets.size()]);
    RandomScene random(seed);
    for (int block = 0; block < 120; ++block) {
      ASSERT_TRUE(random.playBlock()) << "seed " << seed << ", block " << block;
    }
    EXPECT_TRUE(random.sounded);
  }
}

TEST(Frame, TakesAKnobAtABlocksEndWithTheNextBlocksFirstSample) {
  RandomScene scene(1);
  for (int i = 0; i < 60; ++i) {
    ASSERT_TRUE(scene.turnKnobAtBorder(i % 30)) << i;
  }
}

/// `dry` and `wet` are interleaved.
void expectSamplesOneByOne(const OutputKernel& kernel, const std::vector<std::int16_t>& dry,
                           const std::vector<std::int16_t>& wet, std::int32_t gain) {
  const std::size_t frames = dry.size() / 2;
  std::vector<std::int16_t> channels(wet.size());
  const BusSamples bus{channels.data(), channels.data() + frames};
  splitChannels(wet.data(), bus, static_cast<int>(frames));
  std::vector<float> out(dry.size());
  for (const bool isWet : {true, false}) {
    kernel.render(dry.data(), isWet ? bus : BusSamples{}, {out.data(), out.data() + frames}, static_cast<int>(frames),
                  gain);
    for (std::size_t i = 0; i < dry.size(); ++i) {
      const int added = isWet ? wet[i] : 0;
      ASSERT_EQ(out[i / 2 + i % 2 * frames], outputSample(dry[i], added, gain))
          << dry[i] << " + " << added << ", gain " << gain;
    }
  }
}

TEST(OutputStage, GivesTheSameSamplesInBlocksAndOneByOne) {
  constexpr int kWords = 4006;  // Of a number of frames that is no multiple of any vector's length.
  std::vector<std::int16_t> dry(kWords);
  std::vector<std::int16_t> wet(kWords);
  for (const OutputKernel& kernel : outputKernels()) {
    for (const int gain : {0, 1, 51, 8191, 8192, 9830, 16011, 16384, 16385, 32690}) {
      for (int start = -32767; start <= 32767 && tesh::bramel::platform::supports(kernel.needs); start += kWords) {
        for (int i = 0; i < kWords; ++i) {
          dry[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(std::min(start + i, 32767));
          wet[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i % 3 == 0 ? (i * 9973) : 0);
        }
        expectSamplesOneByOne(kernel, dry, wet, gain);
      }
    }
  }
}

}  // namespace
