// Waves that several instances play at the same time.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include "engine/DrumEngine.h"
#include "engine/samples/PadWaves.h"
#include "support/SampleFolder.h"
#include "support/Sanitized.h"

namespace tesh::bramel::plugin::sivray {
namespace {

bool isMemoryRefused = false;

}  // namespace

// Replaces the C library's function.
extern "C" int mprotect(void* start, std::size_t bytes, int access) noexcept {
  return isMemoryRefused ? -1 : static_cast<int>(::syscall(SYS_mprotect, start, bytes, access));
}

namespace {

constexpr std::size_t kRoomyFrames = 20000;
constexpr int kWaveFrames = 9000;

/// The pads of one instance.
struct Instance {
  /// Plays from shared memory, as after a change by the editor or on the host's main thread.
  void play(std::size_t pad, std::int32_t wave) {
    waves.fetch(pad, wave);
    take(pad, wave);
  }
  void take(std::size_t pad, std::int32_t wave) {
    waves.take(pad, wave);
    waves.finish();
  }
  const std::int16_t* memory(std::size_t pad) const { return waves.pool().memoryOf(pad); }

  /// Whether a pad holds a complete wave of the folder, followed by silence.
  bool has(std::size_t pad, const support::Wave& wave) const {
    for (std::size_t frame = 0; frame < kRoomyFrames; ++frame) {
      const auto sample = [frame](const std::vector<std::int16_t>& side) {
        return frame < side.size() ? side[frame] : std::int16_t{0};
      };
      const std::int16_t left = sample(wave.left);
      const std::int16_t right = wave.right.empty() ? left : sample(wave.right);
      if (memory(pad)[2 * frame] != left || memory(pad)[2 * frame + 1] != right) {
        return false;
      }
    }
    return true;
  }

  PcmFile file{"SivrayPCM"};
  PadWaves waves{file, 2, kRoomyFrames};
};

/// Returns the KiB of the process's sample memory that are resident, looking at more than the tests use. An emulator
/// does not report pages without access, so the result is 0 there.
std::ptrdiff_t presentKiB(const SampleMemory& memory) {
  constexpr std::size_t kPages = 2000;
  std::vector<unsigned char> present(kPages);
  ::mincore(const_cast<std::int16_t*>(memory.base()), kPages * 4096, present.data());
  return 4 * std::count_if(present.begin(), present.end(), [](unsigned char bits) { return (bits & 1U) != 0; });
}

TEST(SampleMemory, JoinsWhatIsGivenBackInAnyOrder) {
  constexpr std::size_t kFrames = 16384;  // A multiple of the page size of every system.
  const auto memory = std::make_shared<SampleMemory>();
  for (const auto& order : {std::array{0, 1, 2}, std::array{2, 1, 0}, std::array{0, 2, 1}}) {
    std::array<SampleMemory::Area, 3> areas;
    std::generate(areas.begin(), areas.end(), [&memory] { return SampleMemory::take(memory, kFrames); });
    const SampleMemory::Area behind = SampleMemory::take(memory, kFrames);
    const std::int16_t* const first = areas[0].samples();
    for (const int place : order) {
      const SampleMemory::Area givenBack = std::move(areas[static_cast<std::size_t>(place)]);
    }
    EXPECT_EQ(SampleMemory::take(memory, 3 * kFrames).samples(), first);
  }
}

TEST(WaveStore, KeepsOneCopyOfAWaveUntilItsLastPadHasAnother) {
  const auto waves = support::assortedWaves(2, kWaveFrames);
  const support::SampleFolder folder(waves);
  const auto memory = SampleMemory::ofProcess();
  EXPECT_EQ(presentKiB(*memory), 0);
  auto first = std::make_optional<Instance>();
  first->play(0, 1);
  const auto ofOne = presentKiB(*memory);
  EXPECT_TRUE(ofOne > 30 || support::kIsEmulated);
  Instance second;
  second.play(0, 1);
  second.play(1, 1);
  EXPECT_EQ(second.memory(0), first->memory(0));
  EXPECT_EQ(second.memory(1), first->memory(0));
  EXPECT_EQ(presentKiB(*memory), ofOne);
  first.reset();
  EXPECT_TRUE(second.has(0, waves[1]));
  second.play(0, 0);
  EXPECT_TRUE(second.has(1, waves[1])) << "the other pad still plays it";
  second.play(1, 0);
  second.waves.fetch(1, 1);  // Frees waves that no pad has any more, and takes a new reference.
  second.waves.fetch(1, -1);
  EXPECT_LE(presentKiB(*memory), ofOne + 4);
  EXPECT_TRUE(second.has(0, waves[0]));
}

TEST(WaveStore, GivesWhatTheFileHasNowWhileOthersPlayWhatItHad) {
  const auto before = support::assortedWaves(2, kWaveFrames);
  auto after = before;
  after[0].left[5000] = 77;
  support::SampleFolder folder(before);
  Instance first;
  first.play(0, 0);
  // As by an installer: the new file is written beside the old one and then renamed.
  std::filesystem::rename(folder.pathOf("drumdata.bin"), folder.pathOf("old"));
  folder.write(after);
  Instance second;
  second.play(0, 0);
  EXPECT_TRUE(first.has(0, before[0]));
  EXPECT_TRUE(second.has(0, after[0]));
  first.play(1, 0);
  EXPECT_TRUE(first.has(1, after[0]));
  EXPECT_EQ(first.memory(1), second.memory(0));
  std::filesystem::rename(folder.pathOf("old"), folder.pathOf("drumdata.bin"));
  second.play(1, 0);
  EXPECT_TRUE(second.has(1, before[0]));
}

TEST(WaveStore, LeavesWavesAloneThatAnInstanceReadsWithoutAskingBefore) {
  const auto waves = support::assortedWaves(2, kWaveFrames);
  const support::SampleFolder folder(waves);
  Instance first;
  Instance second;
  first.play(0, 0);
  second.play(0, 0);
  second.take(0, 1);
  EXPECT_TRUE(first.has(0, waves[0]));
  EXPECT_TRUE(second.has(0, waves[1]));
  const auto ofBoth = presentKiB(*SampleMemory::ofProcess());
  first.play(0, 1);
  first.waves.fetch(1, -1);
  second.waves.fetch(1, -1);
  EXPECT_LT(presentKiB(*SampleMemory::ofProcess()), ofBoth + 20) << "nobody has the first wave any more";
}

TEST(WaveStore, LetsPadsReadWavesThemselvesWithoutMemoryForMore) {
  const auto waves = support::assortedWaves(3, kWaveFrames);
  const support::SampleFolder folder(waves);
  Instance instance;
  instance.take(0, 0);
  instance.play(0, 1);
  isMemoryRefused = true;
  EXPECT_NO_THROW(instance.waves.fetch(0, 2)) << "neither for a copy nor in place of what the pad had read";
  instance.take(0, 2);
  isMemoryRefused = false;
  EXPECT_TRUE(instance.has(0, waves[2]));
}

/// An engine of eight pads. The first two have the same wave; the second plays it backwards.
class TwoPads {
 public:
  TwoPads() {
    engine.setParameter(parameterId(kMasterGroup, 0), 0.8F);
    engine.setParameter(parameterId(1, static_cast<unsigned>(PadParameter::reverse)), 1.0F);
    setWave(1, 0, true);
    engine.noteOn(36, 100);
    engine.noteOn(37, 100);
  }
  void setWave(unsigned pad, int wave, bool isReadAhead) {
    const std::uint32_t id = parameterId(pad, static_cast<unsigned>(PadParameter::wave));
    const float value = static_cast<float>(wave) / 7.0F;
    if (isReadAhead) {
      engine.prepare(id, value);
    }
    engine.setParameter(id, value);
  }
  std::array<float, 1000> render() {
    std::array<float, 1000> left{};
    std::array<float, 1000> right{};
    engine.render(left.data(), right.data(), 1000);
    return left;
  }

 private:
  PcmFile file{"SivrayPCM"};
  DrumEngine engine{file, kPadCount, kRoomyFrames};
};

TEST(WaveStore, LetsPadsAndInstancesThatPlayOneWaveChangeApart) {
  const support::SampleFolder folder(support::assortedWaves(8, kWaveFrames));
  TwoPads shared;
  TwoPads alone;
  TwoPads unchanged;
  EXPECT_EQ(shared.render(), alone.render());
  unchanged.render();
  shared.setWave(0, 3, true);
  alone.setWave(0, 3, false);
  EXPECT_EQ(shared.render(), alone.render()) << "the second pad plays on backwards, the first goes over";
  shared.setWave(1, 5, true);
  alone.setWave(1, 5, false);
  EXPECT_EQ(shared.render(), alone.render());
  TwoPads later;
  later.render();
  later.render();
  unchanged.render();
  EXPECT_EQ(unchanged.render(), later.render()) << "nothing that the others did is heard";
}

TEST(WaveStore, HoldsTheFirstWavesOfEnginesOnce) {
  const support::SampleFolder folder(support::assortedWaves(8, kWaveFrames));
  const auto memory = SampleMemory::ofProcess();
  const TwoPads first;
  const auto ofOne = presentKiB(*memory);
  EXPECT_TRUE(ofOne > 100 || support::kIsEmulated);
  const TwoPads second;
  EXPECT_EQ(presentKiB(*memory), ofOne);
}

TEST(WaveStore, GivesThreadsOfManyInstancesTheSameWaves) {
  const auto waves = support::assortedWaves(5, 600);
  const support::SampleFolder folder(waves);
  const auto memory = SampleMemory::ofProcess();
  const auto work = [&waves](unsigned seed) {
    std::mt19937 random(seed);
    for (int made = 0; made < support::scenes(12); ++made) {
      Instance instance;
      std::thread asker([&instance, seed] {
        for (std::int32_t i = 0; i < 40; ++i) {
          instance.waves.fetch(static_cast<std::size_t>(i % 2), static_cast<std::int32_t>(seed) * i % 5);
        }
      });
      for (int change = 0; change < 40; ++change) {
        const std::size_t pad = random() % 2;
        const auto wave = static_cast<std::int32_t>(random() % 5);
        if (random() % 2 == 0) {
          instance.waves.fetch(pad, wave);
        }
        instance.take(pad, wave);
        EXPECT_TRUE(instance.has(pad, waves[static_cast<std::size_t>(wave)]));
      }
      asker.join();
    }
  };
  std::vector<std::thread> threads;
  for (unsigned seed = 1; seed <= 4; ++seed) {
    threads.emplace_back(work, seed);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(presentKiB(*memory), 0) << "the last one has given everything back";
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
