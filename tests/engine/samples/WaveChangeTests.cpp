// The contents of a pad's slot after a change of wave, from valid and broken files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <random>
#include <thread>

#include "engine/samples/WaveChange.h"
#include "support/SampleFolder.h"

namespace tesh::bramel::plugin::sivray {
namespace {

constexpr std::size_t kSlotFrames = 20;

std::vector<std::int16_t> ramp(int first, int frames) {
  std::vector<std::int16_t> samples(static_cast<std::size_t>(frames));
  std::iota(samples.begin(), samples.end(), static_cast<std::int16_t>(first));
  return samples;
}

/// Two pads with their own sample library.
struct Pads {
  explicit Pads(const std::vector<support::Wave>& library) : folder(library), file("SivrayPCM") {}

  void change(int pad, std::int32_t wave) {
    throughBack.setValue(pad, &wave);
    waves.finish();
  }
  std::uint64_t frames(std::size_t pad) const { return pool.slot(pad).frames; }

  /// Returns one channel of the slot's complete memory.
  std::vector<std::int16_t> side(std::size_t pad, std::size_t channel) {
    std::vector<std::int16_t> samples;
    for (std::size_t i = 0; i < kSlotFrames; ++i) {
      samples.push_back(pool.memoryOf(pad)[2 * i + channel]);
    }
    return samples;
  }

  support::SampleFolder folder;
  PcmFile file;
  PadWaves waves{file, 2, kSlotFrames};
  PcmPool& pool = waves.pool();
  PrepareWaveChange prepare{waves};
  PCMLoadTask load{waves};
  PCMLoadAck acknowledge{waves};
  ThroughBack throughBack{prepare, load, acknowledge};
};

std::vector<std::int16_t> padded(std::vector<std::int16_t> samples) {
  samples.resize(kSlotFrames);
  return samples;
}

TEST(WaveChange, FillsTheSlotAndClearsTheRestOfTheWaveBefore) {
  Pads pads({{"mono", ramp(0x1230, 9), {}}, {"stereo", ramp(-7, 5), ramp(300, 8)}});
  pads.change(0, 0);
  EXPECT_EQ(pads.frames(0), 9U);
  EXPECT_EQ(pads.side(0, 0), padded(ramp(0x1230, 9)));
  EXPECT_EQ(pads.side(0, 1), padded(ramp(0x1230, 9)));
  pads.change(0, 1);
  EXPECT_EQ(pads.frames(0), 5U) << "the left side's length";
  EXPECT_EQ(pads.side(0, 0), padded(ramp(-7, 5)));
  EXPECT_EQ(pads.side(0, 1), padded(ramp(300, 5)));
  EXPECT_TRUE(pads.pool.slot(0).ready);
  EXPECT_EQ(pads.frames(1), 0U) << "the other pad has had no wave";
  EXPECT_EQ(pads.pool.slot(1).data, pads.pool.silence());
  for (const int nobody : {-1, 2}) {
    pads.change(nobody, 0);
  }
  EXPECT_EQ(pads.frames(0), 5U);
}

TEST(WaveChange, KeepsTwoSilentFramesAfterTheLongestWave) {
  for (const int length : {17, 18, 19, 20, 21, 40}) {
    Pads pads({{"long", ramp(1, length), ramp(101, length)}});
    pads.change(1, 0);
    const int kept = std::min(length, 18);
    EXPECT_EQ(pads.frames(1), static_cast<std::uint64_t>(kept));
    EXPECT_EQ(pads.side(1, 0), padded(ramp(1, kept))) << length;
    EXPECT_EQ(pads.side(1, 1), padded(ramp(101, kept))) << length;
  }
}

TEST(WaveChange, ReadsTheFirstSampleOfTheFileForAnUnknownWave) {
  Pads pads({{"only", ramp(50, 9), {}}});
  for (const std::int32_t none : {-1, 1, 1 << 30}) {
    pads.change(0, 0);
    pads.change(0, none);
    EXPECT_EQ(pads.frames(0), 1U);
    EXPECT_EQ(pads.side(0, 0), padded({50})) << none;
  }
}

TEST(WaveChange, ReadsSilencePastTheEndOfTheData) {
  Pads pads({{"first", ramp(1, 4), {}}, {"cut", ramp(5, 10), {}}, {"gone", ramp(100, 3), ramp(200, 3)}});
  std::filesystem::resize_file(pads.folder.pathOf("drumdata.bin"), 2 * 9 + 1);  // and half a sample
  pads.change(0, 1);
  EXPECT_EQ(pads.frames(0), 10U);
  EXPECT_EQ(pads.side(0, 0), padded(ramp(5, 5)));
  pads.change(0, 2);
  EXPECT_EQ(pads.frames(0), 3U);
  EXPECT_EQ(pads.side(0, 0), padded({}));
  EXPECT_EQ(pads.side(0, 1), padded({}));
}

TEST(WaveChange, EmptiesTheSlotWhenTheDataCannotBeOpened) {
  Pads pads({{"wave", ramp(1, 4), {}}});
  pads.change(0, 0);
  std::filesystem::remove(pads.folder.pathOf("drumdata.bin"));
  pads.change(0, 0);
  EXPECT_EQ(pads.frames(0), 0U);
  EXPECT_EQ(pads.pool.slot(0).data, pads.pool.silence()) << "a voice plays its first frame even if there is none";
  EXPECT_EQ(pads.side(0, 0), padded(ramp(1, 4))) << "for voices that play it";
}

TEST(WaveChange, ReadsWavesAgainWhenTheDataComesBack) {
  Pads pads({{"long", ramp(1, 15), {}}, {"short", ramp(50, 4), {}}});
  const std::string data = pads.folder.pathOf("drumdata.bin");
  pads.change(0, 0);
  pads.waves.fetch(0, 0);
  std::filesystem::rename(data, data + ".away");
  pads.waves.fetch(0, 1);
  pads.change(0, 1);
  EXPECT_EQ(pads.frames(0), 0U);
  pads.waves.fetch(1, 0);
  std::filesystem::rename(data + ".away", data);
  pads.change(1, 0);
  EXPECT_EQ(pads.side(1, 0), padded(ramp(1, 15)));
  pads.waves.fetch(0, 1);
  pads.change(0, 1);
  EXPECT_EQ(pads.frames(0), 4U);
  EXPECT_EQ(pads.side(0, 0), padded(ramp(50, 4)));
  pads.change(0, 0);
  pads.change(0, 1);
  EXPECT_EQ(pads.side(0, 0), padded(ramp(50, 4)));
}

TEST(WaveChange, GivesTheSameSlotsWhetherAnotherThreadHasReadAheadOrNot) {
  std::vector<support::Wave> waves;
  for (int length = 1; length <= 18; ++length) {
    waves.push_back({"wave", ramp(100 * length, length), ramp(-100 * length, length)});
  }
  Pads pads(waves);
  std::atomic<bool> isOver{false};
  std::thread asker([&] {
    for (std::uint32_t i = 0; !isOver; ++i) {
      pads.waves.fetch(i % 2, static_cast<std::int32_t>(i * 7 % 18));
    }
  });
  std::mt19937 random(3);
  for (int round = 0; round < 3000 && !HasFailure(); ++round) {
    const std::size_t pad = random() % 2;
    const auto wave = static_cast<std::int32_t>(random() % 18);
    if (random() % 3 == 0) {
      pads.waves.fetch(pad, wave);
    }
    pads.change(static_cast<int>(pad), wave);
    ASSERT_EQ(pads.frames(pad), static_cast<std::uint64_t>(wave) + 1);
    ASSERT_EQ(pads.pool.slot(pad).data, pads.pool.memoryOf(pad));
    ASSERT_EQ(pads.side(pad, 0), padded(ramp(100 * (wave + 1), wave + 1))) << round;
    ASSERT_EQ(pads.side(pad, 1), padded(ramp(-100 * (wave + 1), wave + 1))) << round;
  }
  isOver = true;
  asker.join();
}

TEST(WaveChange, KeepsTheFormerWaveInMemoryOnlyUntilTheNextIsReadAhead) {
  constexpr std::size_t kFrames = 40960;  // 40 pages.
  constexpr std::size_t kPages = 200;
  const support::SampleFolder folder({{"long", ramp(1, kFrames), {}}, {"short", ramp(1, 10), {}}});
  PcmFile file("SivrayPCM");
  PadWaves pads(file, 1, kFrames + 2);
  const auto change = [&pads](std::int32_t wave) {
    pads.take(0, wave);
    pads.finish();
  };
  const auto presentPages = [&pool = pads.pool()] {
    std::vector<unsigned char> present(kPages);
    ::mincore(const_cast<std::int16_t*>(pool.base()), present.size() * 4096, present.data());
    return std::count_if(present.begin(), present.end(), [](unsigned char bits) { return (bits & 1U) != 0; });
  };
  for (const bool isReadAhead : {false, true}) {
    if (isReadAhead) {
      pads.fetch(0, 0);
    }
    change(0);
    const auto ofOne = presentPages();
    pads.fetch(0, 1);
    change(1);
    pads.fetch(0, 1);
    EXPECT_LE(presentPages(), ofOne / 10) << isReadAhead;
  }
}

TEST(WaveChange, ReadsOnNoLongerOnceAWaveThatWasReadAheadTakesOver) {
  constexpr std::size_t kFrames = 3 * WaveReading::kPieceFrames;
  const support::SampleFolder folder({{"long", ramp(1, kFrames), {}}});
  PcmFile file("SivrayPCM");
  PadWaves pads(file, 1, kFrames + 2);
  const auto [before, still] = pads.take(0, 0);
  EXPECT_EQ(before, still);
  EXPECT_TRUE(pads.isReading());
  pads.fetch(0, 0);
  const auto [from, to] = pads.take(0, 0);
  EXPECT_EQ(from, still);
  EXPECT_EQ(to, pads.pool().frameOf(pads.pool().slot(0).data)) << "voices play on from where the memory is now";
  EXPECT_NE(to, from);
  EXPECT_FALSE(pads.isReading()) << "the next block would look for a pad that reads, without end";
}

TEST(WaveChange, NeedsNoFileForAWaveThatWasReadAhead) {
  Pads pads({{"first", ramp(1, 4), {}}, {"second", ramp(5, 10), {}}});
  pads.change(0, 0);
  pads.waves.fetch(0, 1);
  EXPECT_EQ(pads.side(0, 0), padded(ramp(1, 4)));
  std::filesystem::remove(pads.folder.pathOf("drumdata.bin"));
  pads.change(0, 1);
  EXPECT_EQ(pads.side(0, 0), padded(ramp(5, 10)));
  pads.waves.fetch(0, 0);  // From here on no file can be read.
  pads.change(0, 0);
  EXPECT_EQ(pads.frames(0), 0U);
}

TEST(WaveChange, SurvivesStretchesThatEndBeforeTheyBeginOrLieBeyondTheFormat) {
  Pads pads({{"wave", ramp(1, 12), {}}});
  const std::array<std::array<std::uint32_t, 2>, 5> stretches{
      {{5, 4}, {5, 3}, {0, 0xFFFFFFFF}, {0x7FFFFFFF, 0x80000003}, {0xFFFFFFFE, 0xFFFFFFFF}}};
  const std::array<std::uint64_t, 5> frames{0, 18, 0, 5, 2};
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    std::vector<std::uint8_t> samples;
    for (const std::uint32_t word : {stretches[i][0], stretches[i][1], 44100U}) {
      for (int shift = 0; shift < 32; shift += 8) {
        samples.push_back(static_cast<std::uint8_t>(word >> shift));
      }
    }
    std::vector<std::uint8_t> waves(24);
    waves[0] = 1;
    pads.file.database().loadFrom(samples, waves);
    pads.change(0, 0);
    EXPECT_EQ(pads.frames(0), frames[i]) << i;
    EXPECT_EQ(pads.side(0, 0)[18], 0);
    EXPECT_EQ(pads.side(0, 0)[19], 0);
  }
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
