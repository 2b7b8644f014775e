// Who asks for a wave reads it from the disk, so that the block which takes it finds it in memory.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include "shell/InstrumentScene.h"

namespace instrument {
namespace {

constexpr int kWaves = 9;
constexpr std::uint64_t kWaveOfPad3 = 3 * 16;
constexpr std::uint64_t kHiddenWave = 4 * 16;  ///< The host does not see it.

/// Takes the file out of the system's cache.
void forget(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY);
  ASSERT_GE(file, 0);
  ::fsync(file);
  ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
  ::close(file);
}

/// Bytes that the calling thread has made the disk read; -1 if the system does not count them.
std::int64_t diskReads() {
  std::ifstream counts("/proc/thread-self/io");
  for (std::string name; counts >> name;) {
    std::int64_t value = 0;
    counts >> value;
    if (name == "read_bytes:") {
      return value;
    }
  }
  return -1;
}

class ReadAhead : public testing::Test {
 protected:
  /// Runs `ask` on a thread of its own with a cold cache. Returns the bytes that the next block then waits for.
  std::int64_t readsInBlockAfter(const std::function<void()>& ask) {
    forget(folder.pathOf("drumdata.bin"));
    std::thread(ask).join();
    return readsInBlock();
  }
  std::int64_t readsInBlock() {
    const std::int64_t before = diskReads();
    player.play(64);
    return diskReads() - before;
  }

  void SetUp() override {
    player.play(64);
    if (readsInBlockAfter([] {}) != 0 || diskReads() < 0) {
      GTEST_SKIP() << "the system does not count what a thread reads";
    }
    player.shell->setParameter(kWaveOfPad3, 1.0F);  // On the thread of the blocks.
    forget(folder.pathOf("drumdata.bin"));
    if (readsInBlock() == 0) {
      GTEST_SKIP() << "the file system keeps the file in memory";
    }
  }

  const support::SampleFolder folder{support::assortedWaves(kWaves, 3000)};
  Player player{makeInstrument(2, {kHiddenWave})};
};

TEST_F(ReadAhead, AWaveIsInMemoryWhoeverAsksForIt) {
  BramelInstrument& shell = *player.shell;
  const Bytes state = shell.getState();
  EXPECT_EQ(readsInBlockAfter([&] { shell.setParameter(kWaveOfPad3, 0.25F); }), 0);
  EXPECT_EQ(shell.engineParameter(kWaveOfPad3), 0.25F);
  EXPECT_EQ(readsInBlockAfter([&] { shell.setState(state.data(), state.size()); }), 0);
  EXPECT_EQ(shell.engineParameter(kWaveOfPad3), 1.0F);
  EXPECT_EQ(readsInBlockAfter([&] { shell.setParameterFromEditor(kHiddenWave, 1.0F); }), 0);
  EXPECT_EQ(shell.engineParameter(kHiddenWave), 1.0F);
  EXPECT_EQ(readsInBlockAfter([&] { shell.setProgram(0, 1); }), 0);
  EXPECT_EQ(shell.engineParameter(kWaveOfPad3), 3.0F / (kWaves - 1));
}

TEST_F(ReadAhead, TheAudioThreadReadsNothingWhileItOnlyAsks) {
  forget(folder.pathOf("drumdata.bin"));
  const std::int64_t before = diskReads();
  player.shell->setParameter(kWaveOfPad3, 0.5F);
  EXPECT_EQ(diskReads(), before);
  EXPECT_GT(readsInBlock(), 0);
}

}  // namespace
}  // namespace instrument
