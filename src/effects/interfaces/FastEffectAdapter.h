// A wrapper that stops running its inner effect while nothing sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "effects/interfaces/BasicEffect.h"

namespace tesh::vimo {

/// Sleeps at first, wakes in the block in which sound arrives, and sleeps again after 48000 samples of silent output.
/// Asleep it passes its input through. `isActive` is the wrapper's own flag, which nothing sets.
class FastEffectAdapter : public BasicEffect {
 public:
  explicit FastEffectAdapter(std::unique_ptr<BasicEffect> innerEffect);

  void reset() override { inner->reset(); }
  void activate() override { inner->activate(); }
  void deactivate() override { inner->deactivate(); }
  unsigned parameterCount() const override { return inner->parameterCount(); }
  void setParameter(unsigned index, float value) override;
  bool hasTail() const override { return inner->hasTail(); }

  /// Its state does not change while it sleeps.
  bool isAsleep() const SIVRAY_NONBLOCKING { return sleeping != 0; }
  void processFloat(FloatBlock in, FloatBlock out, unsigned count) override;
  void processInt16(Int16Block in, Int16Block out, unsigned count) override;

 private:
  /// Runs `process` unless the wrapper stays asleep.
  template <typename Block, typename Process>
  void processAwake(Block in, Block out, unsigned count, Process process);

  static constexpr unsigned kHoldSamples = 48000;

  const std::unique_ptr<BasicEffect> inner;
  std::uint8_t sleeping = 1;
  unsigned silentCountdown = 0;
};

}  // namespace tesh::vimo
