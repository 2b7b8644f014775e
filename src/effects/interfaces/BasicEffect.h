// The family's older effect interface, with a 16-bit and a floating-point path. An effect implements one of the two;
// the other converts and calls it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/EngineRate.h"
#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::vimo {

class BasicEffect;

/// Left and right samples of one block, 16-bit; nothing is owned.
using Int16Block = bramel::plugin::sivray::effects::StereoBlock;

/// Left and right samples of one block, floating point with full scale 1.0; nothing is owned.
struct FloatBlock {
  float* left = nullptr;
  float* right = nullptr;
};

/// Copies the channels whose input and output differ. `Block` is Int16Block or FloatBlock.
template <typename Block>
void copyBlock(Block in, Block out, unsigned count) {
  if (in.left != out.left) {
    std::copy_n(in.left, count, out.left);
  }
  if (in.right != out.right) {
    std::copy_n(in.right, count, out.right);
  }
}

/// The data members of every BasicEffect.
struct BasicEffectState {
  /// A hook that some effects call once per sample.
  using TickListener = void (*)(BasicEffect& effect) SIVRAY_NONBLOCKING;

  /// Samples per channel of one scratch run.
  static constexpr unsigned kRunSamples = 256;

  /// Scratch buffers of one sample type: left in, right in, left out, right out, one run each.
  template <typename Sample>
  using Scratch = std::array<Sample, 4 * kRunSamples>;

  explicit BasicEffectState(BasicEffect& owner) : effect(&owner) {}

  BasicEffect* effect;
  TickListener tickListener = nullptr;
  std::uint8_t active = 0;
  std::vector<bramel::plugin::sivray::effects::Relaxed<float>> parameters;
  Scratch<float> floatScratch{};
  Scratch<std::int16_t> int16Scratch{};
};

/// A stereo effect with parameters from 0.0 to 1.0. A concrete effect overrides `processFloat` or `processInt16` (the
/// other one converts and calls it), and calls `initParameters` last in its constructor. `setParameter` may be called
/// on any thread; all other changes only on the audio thread.
class BasicEffect {
 public:
  BasicEffect();
  BasicEffect(const BasicEffect&) = delete;
  BasicEffect& operator=(const BasicEffect&) = delete;
  virtual ~BasicEffect();

  virtual float preferredSampleRate() const { return static_cast<float>(cofu::core::kEngineRate); }
  virtual bool supportsSampleRate(float rate) const { return rate == preferredSampleRate(); }

  virtual void reset() SIVRAY_NONBLOCKING {}
  virtual void activate() SIVRAY_NONBLOCKING { state->active = 1; }
  virtual void deactivate() SIVRAY_NONBLOCKING { state->active = 0; }
  virtual bool isActive() const SIVRAY_NONBLOCKING { return state->active != 0; }

  virtual unsigned parameterCount() const SIVRAY_NONBLOCKING { return 0; }

  /// The stored value; 0.0 for an index out of range.
  virtual float parameter(unsigned index) const SIVRAY_NONBLOCKING;

  /// Stores the value; ignores an index out of range.
  virtual void setParameter(unsigned index, float value) SIVRAY_NONBLOCKING;

  /// Whether sound may continue after the input has ended.
  virtual bool hasTail() const SIVRAY_NONBLOCKING { return true; }

  /// Process `count` samples per channel; `in` and `out` may be the same block.
  virtual void processFloat(FloatBlock in, FloatBlock out, unsigned count) SIVRAY_NONBLOCKING;
  virtual void processInt16(Int16Block in, Int16Block out, unsigned count) SIVRAY_NONBLOCKING;

 protected:
  /// Makes room for `parameterCount()` values and sets each to 0.0 through the virtual `setParameter`.
  void initParameters();

  const std::unique_ptr<BasicEffectState> state;
};

/// The 16-bit sample that is 1.0.
inline constexpr float kInt16FullScale = 32767.0F;

/// One step of a 16-bit sample, 1 / 32767 to seven digits.
inline constexpr float kInt16Step = 3.051851e-5F;

/// Limits to -1.0 .. 1.0, multiplies by 32767 and truncates.
constexpr std::int16_t int16FromFloat(float sample) SIVRAY_NONBLOCKING {
  const float upper = sample < 1.0F ? sample : 1.0F;
  const float limited = upper > -1.0F ? upper : -1.0F;
  return static_cast<std::int16_t>(limited * kInt16FullScale);
}

/// Multiplies by 1/32767, so that full scale becomes 1.0.
constexpr float floatFromInt16(std::int16_t sample) SIVRAY_NONBLOCKING {
  return static_cast<float>(sample) * kInt16Step;
}

}  // namespace tesh::vimo
