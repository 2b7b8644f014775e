// Runs an effect and a plain model of it through a random scene, and compares every sample.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "effects/interfaces/SivrayFx.h"

namespace scene {

using tesh::bramel::plugin::sivray::effects::StereoBlock;

/// Stereo samples with a block view.
struct Stereo {
  std::vector<std::int16_t> left;
  std::vector<std::int16_t> right;

  explicit Stereo(std::size_t frames = 0) : left(frames), right(frames) {}
  StereoBlock block() { return {left.data(), right.data()}; }
  bool operator==(const Stereo&) const = default;
};

/// Random numbers, and drum-like input.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine(seed) {}

  int upTo(int last) { return std::uniform_int_distribution<int>(0, last)(engine); }
  bool oneIn(int n) { return upTo(n - 1) == 0; }

  /// Returns noise of random level; sometimes silence or full scale.
  Stereo input(int frames) {
    Stereo s(static_cast<std::size_t>(frames));
    const int level = oneIn(4) ? 0 : 1 << upTo(15);
    const bool square = oneIn(5);
    for (int i = 0; i < frames; ++i) {
      s.left[static_cast<std::size_t>(i)] = sample(level, square);
      s.right[static_cast<std::size_t>(i)] = sample(level, square);
    }
    return s;
  }

  /// Returns a size from 1 to 2048, usually small.
  int blockSize() { return 1 + upTo((1 << (1 + upTo(10))) - 1); }

 private:
  std::int16_t sample(int level, bool square) {
    const int x = square ? (oneIn(2) ? level : -level) : upTo(2 * level) - level;
    return static_cast<std::int16_t>(std::clamp(x, -32768, 32767));
  }

  std::mt19937 engine;
};

/// Plays random scenes through both and compares every sample. `Fast` and `Model` need setParameter(index, value),
/// setTempo(tenths), setImmediate(on), reset() and process(block, count).
template <typename Fast, typename Model>
void expectSameSound(Fast& fast, Model& model, unsigned seed, int blocks) {
  Dice dice(seed);
  const auto both = [&](auto&& act) {
    act(fast);
    act(model);
  };
  both([](auto& fx) { fx.reset(); });
  for (int b = 0; b < blocks; ++b) {
    if (dice.oneIn(3)) {
      const auto index = static_cast<unsigned>(dice.upTo(4));
      const int value = dice.oneIn(4) ? (dice.oneIn(2) ? 127 : 0) : dice.upTo(127);
      both([&](auto& fx) { fx.setParameter(index, value); });
    }
    if (dice.oneIn(10)) {
      const int tempo = dice.oneIn(3) ? dice.upTo(30) : dice.upTo(3000);
      both([&](auto& fx) { fx.setTempo(tempo); });
    }
    if (dice.oneIn(8)) {
      const bool on = dice.oneIn(2);
      both([&](auto& fx) { fx.setImmediate(on); });
    }
    if (dice.oneIn(40)) {
      both([](auto& fx) { fx.reset(); });
    }
    const int frames = dice.blockSize();
    Stereo a = dice.input(frames);
    Stereo c = a;
    StereoBlock blockOfFast = a.block();
    StereoBlock blockOfModel = c.block();
    fast.process(blockOfFast, static_cast<unsigned>(frames));
    model.process(blockOfModel, static_cast<unsigned>(frames));
    ASSERT_EQ(a, c) << "seed " << seed << " block " << b;
  }
}

}  // namespace scene
