// The thread that asks for a wave reads it from disk, so that the block that applies the change reads no file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <thread>

#include "shell/InstrumentScene.h"

namespace instrument {
namespace {

constexpr int kWaves = 9;
constexpr std::uint64_t kWaveOfPad3 = 3 * 16;
constexpr std::uint64_t kHiddenWave = 4 * 16;  ///< Not visible to the host.

class ReadAhead : public testing::Test {
 protected:
  void SetUp() override {
    player.play(64);
    player.shell->setParameter(kWaveOfPad3, 1.0F);  // This is the thread that renders blocks.
    ASSERT_TRUE(sounds(3));
  }

  /// Whether a note sounds at its 1500th frame. Without samples the previous sound has faded out by then.
  bool sounds(int pad) {
    player.note(36 + pad);
    player.play(1500);
    player.left.clear();
    player.right.clear();
    player.play(64);
    return std::any_of(player.left.begin(), player.left.end(), [](float sample) { return sample != 0.0F; });
  }

  /// Renders the block after `ask` while the samples' file is missing. Returns whether the pad sounds afterwards.
  bool soundsWithoutFile(int pad, const std::function<void()>& ask) {
    ask();
    const auto file = folder.pathOf("drumdata.bin");
    const auto elsewhere = folder.pathOf("elsewhere");
    std::filesystem::rename(file, elsewhere);
    player.play(64);
    std::filesystem::rename(elsewhere, file);
    return sounds(pad);
  }
  bool soundsWhenAskedElsewhere(int pad, const std::function<void()>& ask) {
    return soundsWithoutFile(pad, [&ask] { std::thread(ask).join(); });
  }

  const support::SampleFolder folder{support::assortedWaves(kWaves, 3000)};
  Player player{makeInstrument(2, {kHiddenWave})};
};

TEST_F(ReadAhead, AWaveIsInMemoryWhoeverAsksForIt) {
  BramelInstrument& shell = *player.shell;
  const Bytes state = shell.getState();
  EXPECT_TRUE(soundsWhenAskedElsewhere(3, [&] { shell.setParameter(kWaveOfPad3, 0.25F); }));
  EXPECT_EQ(shell.engineParameter(kWaveOfPad3), 0.25F);
  EXPECT_TRUE(soundsWhenAskedElsewhere(3, [&] { shell.setState(state.data(), state.size()); }));
  EXPECT_EQ(shell.engineParameter(kWaveOfPad3), 1.0F);
  EXPECT_TRUE(soundsWhenAskedElsewhere(4, [&] { shell.setParameterFromEditor(kHiddenWave, 1.0F); }));
  EXPECT_EQ(shell.engineParameter(kHiddenWave), 1.0F);
  EXPECT_TRUE(soundsWhenAskedElsewhere(3, [&] { shell.setProgram(0, 1); }));
  EXPECT_EQ(shell.engineParameter(kWaveOfPad3), 3.0F / (kWaves - 1));
}

TEST_F(ReadAhead, TheAudioThreadReadsNothingWhileItOnlyAsks) {
  EXPECT_FALSE(soundsWithoutFile(3, [&] { player.shell->setParameter(kWaveOfPad3, 0.5F); }));
  EXPECT_EQ(player.shell->engineParameter(kWaveOfPad3), 0.5F);
}

}  // namespace
}  // namespace instrument
