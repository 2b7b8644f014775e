// The shell around the real engine: properties of the sound that hold for any block sizes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cfenv>
#include <cmath>
#include <thread>

#if defined(__x86_64__) || defined(__i386__)
#include <xmmintrin.h>
#endif

#include "InstrumentScene.h"
#include "core/LittleEndian.h"
#include "storage/state/EditBufferRecord.h"

namespace instrument {
namespace {

class Instrument : public testing::Test {
 protected:
  support::SampleFolder folder{support::assortedWaves(12, 900)};
};

float loudest(const std::vector<float>& samples) {
  return std::abs(
      *std::max_element(samples.begin(), samples.end(), [](float a, float b) { return std::abs(a) < std::abs(b); }));
}

/// Returns a state's content without the factory bank, because the ids of its programs differ between instruments.
Bytes contentOf(const Bytes& state) {
  Bytes content = bramel::vst::unpackState(state)->content;
  const auto word = [&content](std::size_t at) { return std::size_t{cofu::core::wordIn(content, at).value()}; };
  const std::size_t macros = 16 + word(4) + word(8);
  const auto bank = content.begin() + static_cast<std::ptrdiff_t>(macros + 48 + word(macros + 8));
  content.erase(bank, bank + static_cast<std::ptrdiff_t>(word(macros + 12)));
  return content;
}

/// Plays a bar in blocks whose sizes `next` returns, with a note every 1500 frames at the engine's rate.
template <typename Next>
Player playBar(float rate, Next next) {
  constexpr int kFrames = 12000;
  constexpr int kStep = 1500;
  Player player(makeInstrument());
  player.play(2048);  // Lets the initial glides settle.
  player.left.clear();
  player.right.clear();
  player.shell->setSampleRate(rate);
  for (int pad = 0; pad < 8; ++pad) {
    if (rate != 44100.0F) {
      player.note(36 + pad);
    }
  }
  for (int start = 0; start < kFrames;) {
    const int frames = std::min(next(), kFrames - start);
    for (int at = 0; at < kFrames && rate == 44100.0F; at += kStep) {
      if (at >= start && at < start + frames) {
        player.note(36 + at / kStep, 100, at - start);
      }
    }
    player.play(frames);
    start += frames;
  }
  return player;
}

TEST_F(Instrument, SoundsTheSameInBlocksOfAnySize) {
  for (const float rate : {44100.0F, 48000.0F, 22050.0F, 96000.0F}) {
    const Player whole = playBar(rate, [] { return 12000; });
    EXPECT_GT(loudest(whole.left), 0.01F) << rate;
    for (const int size : {1, 137, 2048, 2049}) {
      const Player cut = playBar(rate, [size] { return size; });
      EXPECT_EQ(cut.left, whole.left) << rate << " in " << size;
      EXPECT_EQ(cut.right, whole.right) << rate << " in " << size;
    }
    std::mt19937 random(1);
    const Player mixed = playBar(rate, [&random] { return static_cast<int>(random() % 700 + 1); });
    EXPECT_EQ(mixed.left, whole.left) << rate;
  }
}

/// Returns the processor's floating-point control register without the exception flags.
std::uint64_t floatingPointSettings() {
#if defined(__aarch64__)
  std::uint64_t settings = 0;
  asm volatile("mrs %0, fpcr" : "=r"(settings));
  return settings;
#else
  constexpr unsigned kStatusBits = 0x3F;
  return _mm_getcsr() & ~kStatusBits;
#endif
}

TEST_F(Instrument, GivesTheCallersFloatingPointSettingsBack) {
  std::fesetround(FE_TOWARDZERO);
  const std::uint64_t before = floatingPointSettings();
  Player player(makeInstrument());
  player.note(36);
  player.play(64);
  const std::uint64_t after = floatingPointSettings();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(after, before);
}

TEST_F(Instrument, SoundsAndSavesTheSameFromAState) {
  std::mt19937 random(7);
  for (int round = 0; round < 5; ++round) {
    Player first(makeInstrument());
    for (std::uint64_t id = 0; id < first.shell->cachedParameterCount(); ++id) {
      first.shell->setParameter(id, static_cast<float>(random() % 1000) / 999.0F);
    }
    first.play(2000);
    const Bytes saved = first.shell->getState();
    Player second(makeInstrument());
    second.shell->setState(saved.data(), saved.size());
    second.play(2000);
    EXPECT_EQ(contentOf(second.shell->getState()), contentOf(saved));
    for (Player* player : {&first, &second}) {
      player->shell->suspend();
      player->shell->resume();
      for (int pad = 0; pad < 8; ++pad) {
        player->note(36 + pad);
      }
      player->play(4000);
    }
    EXPECT_TRUE(std::equal(first.left.begin() + 2000, first.left.end(), second.left.begin() + 2000)) << round;
  }
}

TEST_F(Instrument, LetsThreadsWriteReadAndLoadWhileItPlays) {
  constexpr int kBlocks = 100;
  Player player(makeInstrument());
  player.reserve(static_cast<std::size_t>(kBlocks) * 64);
  BramelInstrument& shell = *player.shell;
  const Bytes saved = shell.getState();
  std::atomic<bool> isPlaying{true};
  const auto repeat = [&isPlaying](auto action) {
    return std::thread([&isPlaying, action] {
      for (std::uint32_t round = 0; isPlaying; ++round) {
        action(round);
      }
    });
  };
  std::vector<std::thread> threads;
  for (std::uint32_t writer = 0; writer < 2; ++writer) {
    threads.push_back(repeat([&shell, writer](std::uint32_t round) {
      const std::uint64_t id = (round + writer) % kPadValues;
      shell.setParameter(id, static_cast<float>(round % 100) / 99.0F);
      shell.parameterDisplay(id);
      EXPECT_GE(shell.parameterValue(id), 0.0F);
      shell.setKeyState(static_cast<int>(round % 128), round);
    }));
  }
  threads.push_back(repeat([&shell, &saved](std::uint32_t round) {
    switch (round % 4) {
      case 0:
        shell.setState(saved.data(), saved.size());
        break;
      case 1:
        shell.setProgram(0, round / 4 % 2);
        break;
      case 2:
        EXPECT_EQ(shell.getState().size(), saved.size());
        break;
      default:
        shell.setSampleRate(round % 8 < 4 ? 48000.0F : 44100.0F);
        break;
    }
  }));
  for (int block = 0; block < kBlocks; ++block) {
    player.note(36 + block % 8);
    shell.setTempo(100.0F + static_cast<float>(block));
    player.play(64);
    std::this_thread::yield();
  }
  isPlaying = false;
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_TRUE(std::all_of(player.left.begin(), player.left.end(), [](float sample) { return std::isfinite(sample); }));
}

}  // namespace
}  // namespace instrument
