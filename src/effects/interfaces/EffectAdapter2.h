// The adapter for an effect core whose delay lines lie in the shared pool.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"

namespace tesh::bramel::plugin::sivray::effects {

/// As EffectAdapter, for a core that also has `void setMemory(std::int16_t*)` and a constant
/// `static constexpr std::size_t kRequiredSamples`. Until the first `reset` the core has no memory and must not run.
template <typename T>
class EffectAdapter2 : public EffectAdapter<T>, public SivrayFxMemoryUser {
 public:
  void reset() override {
    this->core.setMemory(assigner->acquire());
    this->core.reset();
  }

  std::size_t requiredSamples() const override { return T::kRequiredSamples; }
};

template <TwoKnobLaw Core>
class EffectAdapter2<Core> : public AdaptedEffect<TwoKnobMemoryEffect<Core>> {};

}  // namespace tesh::bramel::plugin::sivray::effects
