// The frame's inputs and when they take effect, and the engine before its first level.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "FrameScene.h"

namespace {

using namespace scene;

constexpr std::uint32_t kPitchOfPad4 = 0x044;
constexpr std::uint32_t kMeters = 0x130;

/// Counts how often a file is opened.
class OpenCounter {
 public:
  explicit OpenCounter(const std::string& path) : queue(inotify_init1(IN_NONBLOCK)) {
    // Watching also for close events keeps the kernel from merging two opens into one event.
    inotify_add_watch(queue, path.c_str(), IN_OPEN | IN_CLOSE);
  }
  ~OpenCounter() { ::close(queue); }
  OpenCounter(const OpenCounter&) = delete;
  OpenCounter& operator=(const OpenCounter&) = delete;

  int take() {
    alignas(inotify_event) std::array<char, 65536> bytes{};
    const ssize_t size = ::read(queue, bytes.data(), bytes.size());
    int opened = 0;
    for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(sizeof(inotify_event))) {
      const auto* event = reinterpret_cast<const inotify_event*>(bytes.data() + at);
      opened += (event->mask & IN_OPEN) != 0 ? 1 : 0;
    }
    return opened;
  }

 private:
  int queue;
};

TEST(Frame, IsAPureStereoGenerator) {
  Player player;
  EXPECT_EQ(player.plugin.outputCount(), 2);
  EXPECT_EQ(player.plugin.inputCount(), 0);
  EXPECT_EQ(player.plugin.kind(), 0);
  EXPECT_EQ(player.plugin.parameterCount(), 560);
  EXPECT_EQ(player.plugin.programCount(), 128);
  EXPECT_STREQ(player.plugin.typeName(), "VstXSynth");
  EXPECT_NE(player.plugin.sampleLibrary(), nullptr);
}

TEST(Frame, IsSilentUntilTheMasterLevelHasBeenSet) {
  Player player;
  EXPECT_FLOAT_EQ(player.plugin.getParameter(kMasterOut), 100.0F / 127.0F);
  player.set(0x00D, 0.0F);  // Not sent to the effect, whose tail would go on.
  player.note(0, 36);
  player.process(2000);
  EXPECT_EQ(player.firstSound(), -1);
  openMaster(player);
  player.note(100, 36);
  player.process(512);
  EXPECT_EQ(player.firstSound(), 100);
}

TEST(Frame, StaysSilentForAHitWhoseWaveCouldNotBeRead) {
  Player player;
  openMaster(player);
  player.set(0x00D, 0.0F);
  const std::string data = player.folder.pathOf("drumdata.bin");
  std::filesystem::rename(data, data + ".away");
  player.set(0x000, 1.0F);
  player.note(0, 36, 127);
  player.process(100);
  EXPECT_EQ(player.firstSound(), -1);
  std::filesystem::rename(data + ".away", data);
  player.automate(0, 0x000, 0.5F);
  player.process(2048);
  EXPECT_EQ(player.firstSound(), -1) << "nor while it fades, on another wave";
}

TEST(Frame, ReadsAWaveOnceWhereItIsNeeded) {
  const support::SampleFolder folder(support::assortedWaves(kWaves, 500));
  OpenCounter counter(folder.pathOf("drumdata.bin"));
  PcmFile file(kSampleFolder);
  counter.take();
  DrumEngine engine(file, kPadCount, kSlot);
  EXPECT_EQ(counter.take(), kPadCount);
  const float third = 3.0F / (kWaves - 1);
  engine.setParameter(0x030, third);
  EXPECT_EQ(counter.take(), 0) << "pad 3 holds wave 3 already";
  engine.setParameter(0x040, third);
  EXPECT_EQ(counter.take(), 1);
  const auto chunk = engine.bank().getChunk();
  engine.bank().setChunk(chunk);
  EXPECT_EQ(counter.take(), 0) << "no wave has changed";
  for (const int reads : {1, 0}) {
    engine.prepare(0x050, third);
    EXPECT_EQ(counter.take(), reads);
  }
  engine.setParameter(0x050, third);
  engine.prepare(0x050, third);
  EXPECT_EQ(counter.take(), 0) << "pad 5 has it by now";

  SivrayPlugin<VstXSynth> waiting(kSampleFolder, kSlot, WaveLoading::later);
  EXPECT_EQ(counter.take(), 0) << "not even the whole file, for the system's cache: it is there already";
  waiting.setState(chunk);
  EXPECT_EQ(counter.take(), 0);
  waiting.activate();
  EXPECT_EQ(counter.take(), kPadCount);
  SivrayPlugin<VstXSynth> stateless(kSampleFolder, kSlot, WaveLoading::later);
  counter.take();
  stateless.activate();
  EXPECT_EQ(counter.take(), kPadCount);
}

TEST(Frame, TakesDirectParametersOnlyWhileInactive) {
  Player player;
  player.plugin.setParameter(kPitchOfPad4, 1.0F);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), 0.5F) << "not before the next block";
  player.process(1);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), 1.0F);
  player.plugin.activate();
  player.plugin.setParameter(kPitchOfPad4, 0.0F);
  player.process(1);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), 1.0F);
  player.automate(0, kPitchOfPad4, 0.25F);
  player.process(1);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), 0.25F);
  player.plugin.deactivate();
  player.plugin.setParameter(kPitchOfPad4, 0.0F);
  player.process(1);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), 0.0F);
}

TEST(Frame, TellsItsListenerOncePerBurst) {
  struct Listener : tesh::vimo::PluginListener {
    void parametersArrived() override { ++calls; }
    int calls = 0;
  } listener;
  Player player;
  player.plugin.setListener(&listener);
  player.process(16);
  EXPECT_EQ(listener.calls, 0);
  for (std::uint32_t frame = 0; frame < 3; ++frame) {
    player.automate(frame, kPitchOfPad4, 0.1F);
  }
  player.process(0);
  EXPECT_EQ(listener.calls, 1);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), 0.5F) << "an empty block takes in and renders nothing";
  player.process(4);
  EXPECT_NE(player.plugin.getParameter(kPitchOfPad4), 0.5F);
}

TEST(Frame, SurvivesWildValuesAndBlocksAboveItsLargest) {
  Player player;
  openMaster(player);
  constexpr float kHuge = std::numeric_limits<float>::max();
  for (const float wild : {kHuge, -kHuge, std::nanf(""), std::numeric_limits<float>::infinity(), -1.0F, 2.0F}) {
    for (std::uint32_t id = 0; id < 0x300; ++id) {
      player.automate(id, id, wild);
    }
    for (int pad = 0; pad < 8; ++pad) {
      player.note(1000, 36 + pad);
    }
    player.plugin.tempoChanged(wild);
    player.process(5000);
    for (const float sample : player.left) {
      ASSERT_LE(std::abs(sample), 1.0F);
    }
  }
}

TEST(Frame, AnotherThreadReadsAndQueuesWhileItPlays) {
  Player player;
  openMaster(player);
  std::atomic<bool> playing{true};
  std::atomic<bool> hasQueued{false};  // On a busy machine the other thread may start late.
  std::thread other([&] {
    while (playing) {
      for (std::uint32_t id = 0; id < kMeters; ++id) {
        player.plugin.getParameter(id);
        player.plugin.getParameterDisplay(id);
      }
      player.plugin.setParameter(kPitchOfPad4, 0.3F);
      player.plugin.tempoChanged(130.0);
      hasQueued = true;
    }
  });
  for (int block = 0; block < 200 || !hasQueued; ++block) {
    player.automate(3, parameterId(static_cast<std::uint32_t>(block) % 8, 0), static_cast<float>(block % 12) / 11.0F);
    player.automate(5, 0x100, static_cast<float>(block % 30) / 29.0F);
    player.note(7, 36 + block % 8);
    player.process(64);
  }
  playing = false;
  other.join();
  player.process(64);
  EXPECT_EQ(player.plugin.getParameter(kPitchOfPad4), static_cast<float>(14) / 48.0F);
}

}  // namespace
