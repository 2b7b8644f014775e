// The delays against slow, plain models, and the times that their knobs give.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "effects/delays/SivrayFxBpmSyncDelay.h"
#include "effects/delays/SivrayFxShortDelay.h"
#include "effects/interfaces/SivrayFxMemoryManager.h"
#include "effects_interfaces/EffectScene.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

int sat(long x) { return static_cast<int>(x > 32767 ? 32767 : (x < -32767 ? -32767 : x)); }
int squareKnob(int i) { return static_cast<int>(32767.0 * i * i / 16129.0); }
int convexKnob(int i) { return static_cast<int>(32767.0 * (16129.0 - (127 - i) * (127 - i)) / 16129.0); }
int wrapped(long x) { return static_cast<int>(static_cast<std::uint32_t>(x)); }

struct PlainShortDelay {
  int edit1 = 0, edit2 = 0, pendingTime = 0, pendingLevel = 0, time = 0, level = 0, timeState = 0, levelState = 0;
  bool dirty = false, immediate = false;
  unsigned w = 0;
  std::array<std::vector<int>, 2> line{std::vector<int>(16384), std::vector<int>(16384)};

  void setParameter(unsigned index, int value) {
    if (index != 2 && index != 3) return;
    (index == 2 ? edit1 : edit2) = value & 127;
    pendingTime = std::max(squareKnob(edit1), 5) * 16383 >> 15;
    const double above = std::max(edit1 - 63, 0) / 64.0;
    pendingLevel = convexKnob(edit2) * static_cast<int>(30720 - 4608 * above * above) >> 15;
    dirty = true;
  }
  void setTempo(int) {}
  void setImmediate(bool on) { immediate = on; }
  void reset() {
    for (auto& l : line) l.assign(l.size(), 0);
    timeState = time << 15;
    levelState = level << 15;
  }
  int echo(const std::vector<int>& l) const {
    const unsigned read = (w - static_cast<unsigned>(timeState >> 15)) & 16383;
    const int a = l[read], b = l[(read - 1) & 16383];
    int tap = static_cast<int>(static_cast<long>(b - a) * (timeState & 32767) >> 15) + a;
    tap = tap * 32767 >> 15;
    int e = (levelState >> 15) * tap >> 15;
    if (tap != 0 && e == tap) e -= tap > 0 ? 1 : -1;
    return e;
  }
  void process(StereoBlock& block, unsigned count) {
    const int k = immediate ? 32767 : 102;
    for (unsigned i = 0; i < count; ++i) {
      if (i % 64 == 0 && dirty) {
        time = pendingTime;
        level = pendingLevel;
        dirty = false;
      }
      levelState += (level - (levelState >> 15)) * k;
      timeState += (time - (timeState >> 15)) * k;
      const int e1 = echo(line[0]), e2 = echo(line[1]);
      const int g = 32767 - (levelState >> 16);
      const int left = sat((block.left[i] * g >> 15) + e2), right = sat((block.right[i] * g >> 15) + e1);
      line[0][w] = left;
      line[1][w] = right;
      block.left[i] = static_cast<std::int16_t>(left);
      block.right[i] = static_cast<std::int16_t>(right);
      w = (w + 1) & 16383;
    }
  }
};

struct PlainBpmDelay {
  static constexpr std::array<int, 14> kLength{165375,  330750,  441000,  661500,  882000,  1323000, 1764000,
                                               1984500, 2646000, 3528000, 3969000, 5292000, 7938000, 10584000};
  static constexpr std::array<int, 14> kLastKnob{8, 17, 26, 35, 44, 53, 62, 71, 82, 91, 100, 109, 118, 127};
  int edit1 = 0, edit2 = 0, bpm = 120, limit = 13, inputGain = 32767, feedback = 0, time = 0;
  int gainState = 0, feedbackState = 0, timeState = 0, tapLeft = 0, tapRight = 0;
  bool immediate = false;
  unsigned w = 0;
  std::array<std::vector<int>, 2> line{std::vector<int>(131072), std::vector<int>(131072)};

  int note() const {
    int n = 0;
    while (kLastKnob[static_cast<std::size_t>(n)] < edit1) ++n;
    return std::min(n, limit);
  }
  void setTime() { time = kLength[static_cast<std::size_t>(note())] / bpm; }
  void setParameter(unsigned index, int value) {
    if (index != 2 && index != 3) return;
    (index == 2 ? edit1 : edit2) = value & 127;
    if (index == 2) setTime();
    const int a = 32767 - ((edit1 == 127 ? 32767 : 258 * edit1) >> 3);
    feedback = a * (convexKnob(edit2) * 29491 >> 15) >> 15;
    inputGain = 32767 - (feedback >> 1);
  }
  void setTempo(int tenths) {
    bpm = std::max(1, tenths / 10);
    limit = 13;
    for (int n = 13; n >= 0; --n) {
      if (kLength[static_cast<std::size_t>(n)] < bpm * 131072L) {
        limit = n;
        break;
      }
    }
    setTime();
  }
  void setImmediate(bool on) { immediate = on; }
  void reset() {
    for (auto& l : line) l.assign(l.size(), 0);
    tapLeft = 0;
    gainState = inputGain << 15;
    feedbackState = feedback << 15;
    timeState = wrapped(time * 4096L);
  }
  void process(StereoBlock& block, unsigned count) {
    const int k = immediate ? 32767 : 102;
    for (unsigned i = 0; i < count; ++i) {
      gainState += (inputGain - (gainState >> 15)) * k;
      const int g = gainState >> 15;
      const int right = sat(((g * block.right[i] >> 7) - (tapRight >> 7)) >> 8);
      const int left = sat(((g * block.left[i] >> 7) - (tapLeft >> 7)) >> 8);
      block.left[i] = static_cast<std::int16_t>(left);
      block.right[i] = static_cast<std::int16_t>(right);
      line[0][w] = right;
      line[1][w] = left;
      timeState = wrapped(timeState + (static_cast<long>(time) - (timeState >> 12)) * 3);
      feedbackState += (feedback - (feedbackState >> 15)) * k;
      const unsigned read = (w - static_cast<unsigned>(timeState >> 12)) & 131071, read2 = (read - 1) & 131071;
      const int frac = timeState & 4095, f = feedbackState >> 15;
      tapLeft = (((line[0][read2] - line[0][read]) * frac >> 12) + line[0][read]) * f;
      tapRight = (((line[1][read2] - line[1][read]) * frac >> 12) + line[1][read]) * f;
      w = (w + 1) & 131071;
    }
  }
};

TEST(Delays, ShortDelaySoundsAsItsPlainModel) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SivrayFxMemoryManager memory;
    SivrayFxShortDelay fast;
    memory.add(&fast);
    PlainShortDelay plain;
    scene::expectSameSound(fast, plain, seed, 300);
  }
}

TEST(Delays, BpmDelaySoundsAsItsPlainModelAtEveryTempo) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SivrayFxMemoryManager memory;
    SivrayFxBpmSyncDelay fast;
    memory.add(&fast);
    PlainBpmDelay plain;
    scene::expectSameSound(fast, plain, seed, 300);
  }
}

/// The frame at which a click comes back, after it was let in at frame 0 with everything at rest.
template <typename Effect>
int firstEcho(Effect& effect) {
  scene::Stereo settle(200000);
  StereoBlock block = settle.block();
  effect.process(block, 200000);
  scene::Stereo s(140000);
  s.left[0] = 20000;
  block = s.block();
  effect.process(block, 140000);
  const auto found = std::find_if(s.right.begin(), s.right.end(), [](int x) { return std::abs(x) > 1000; });
  return static_cast<int>(found - s.right.begin());
}

TEST(Delays, ShortDelayEchoesOnTheOtherSideAfterTheTimeOfItsKnob) {
  for (const auto& [knob, samples] : {std::pair{0, 2}, {64, 4160}, {127, 16382}}) {
    SivrayFxMemoryManager memory;
    SivrayFxShortDelay delay;
    memory.add(&delay);
    delay.reset();
    delay.setParameter(kEdit1, knob);
    delay.setParameter(kEdit2, 127);
    EXPECT_EQ(firstEcho(delay), samples) << knob;
  }
}

TEST(Delays, BpmDelayKeepsToNotesThatFitItsLine) {
  // The echo reaches the output one sample after the tap is read.
  for (const auto& [tempo, knob, samples] :
       {std::tuple{1200, 75, 22050}, {1205, 75, 22050}, {1200, 127, 88200}, {400, 127, 99225}, {400, 100, 99225}}) {
    SivrayFxMemoryManager memory;
    SivrayFxBpmSyncDelay delay;
    memory.add(&delay);
    delay.reset();
    delay.setTempo(tempo);
    delay.setParameter(kEdit1, knob);
    delay.setParameter(kEdit2, 127);
    EXPECT_NEAR(firstEcho(delay), samples + 1, 1) << tempo << " " << knob;
  }
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
