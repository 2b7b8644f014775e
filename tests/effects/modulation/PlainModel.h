// The base class of the plain effect models, which compute one sample at a time in 64 bits, and their shared
// arithmetic.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "effects/interfaces/EffectScene.h"
#include "effects/interfaces/SivrayFx.h"

namespace scene {

using tesh::bramel::plugin::sivray::effects::SivrayFx;

struct PlainModel {
  virtual ~PlainModel() = default;
  virtual void edit(unsigned index, std::int64_t knob) = 0;
  virtual void setTempo(int) {}
  virtual void reset() = 0;
  virtual void grid() {}  ///< Called before each sample whose index in the block is a multiple of 64.
  virtual void sample(std::int64_t& left, std::int64_t& right) = 0;

  void setParameter(unsigned index, int value) {
    if (index >= 2) {
      edit(index - 2, value);
    }
  }
  void setImmediate(bool on) { immediate = on; }
  void process(StereoBlock& block, unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
      if (i % 64 == 0) {
        grid();
      }
      std::int64_t left = block.left[i];
      std::int64_t right = block.right[i];
      sample(left, right);
      block.left[i] = static_cast<std::int16_t>(left);
      block.right[i] = static_cast<std::int16_t>(right);
      ASSERT_EQ(block.left[i], left) << "the model left the range of a sample";
      ASSERT_EQ(block.right[i], right) << "the model left the range of a sample";
    }
  }

  bool immediate = false;
};

/// Compares effect and model over random scenes of many short blocks. Each scene starts with new objects.
template <typename Effect, typename Model>
void playScenes(const Model& fresh, int blocks = 150) {
  SCOPED_TRACE(testing::internal::GetTypeName<Effect>());
  for (unsigned seed = 1; seed <= 6; ++seed) {
    auto effect = Effect();
    Model model = fresh;
    expectSameSound(effect, model, seed, blocks);
  }
}

/// Returns a constant signal on both channels.
inline Stereo constantSound(std::size_t frames, std::int16_t value) {
  Stereo sound(frames);
  std::fill(sound.left.begin(), sound.left.end(), value);
  sound.right = sound.left;
  return sound;
}

inline void process(SivrayFx& effect, Stereo& sound) {
  StereoBlock block = sound.block();
  effect.process(block, static_cast<unsigned>(sound.left.size()));
}

inline std::int64_t clampTo(std::int64_t x, std::int64_t limit) { return std::clamp(x, -limit, limit); }
inline std::int64_t sat(std::int64_t x) { return clampTo(x, 32767); }
inline std::int64_t leaks(std::int64_t v, int times) {
  for (int i = 0; i < times; ++i) {
    v = (v * -32766) >> 15;
  }
  return v;
}
inline std::int64_t linear(std::int64_t i) { return i == 127 ? 32767 : 258 * i; }
inline std::int64_t square(std::int64_t i) { return 32767 * i * i / 16129; }
inline std::int32_t wrap(std::int64_t x) { return static_cast<std::int32_t>(x); }

struct Glide {
  std::int64_t state = 0;
  std::int64_t value() const { return state >> 15; }
  void to(std::int64_t target, bool immediate) { state += (target - (state >> 15)) * (immediate ? 32767 : 102); }
  void jump(std::int64_t target) { state = target * 32768; }
};

}  // namespace scene
