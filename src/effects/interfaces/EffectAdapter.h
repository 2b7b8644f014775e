// Turns a law that has the name of a core, and no operations of an effect itself, into a SivrayFx.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Answers the multi-effector's own indices, which an effect does not use, with the value given.
template <typename Effect>
class AdaptedEffect : public Effect {
 public:
  int setParameter(unsigned index, int value) override {
    return index < kEdit1 ? value : Effect::setParameter(index, value);
  }
};

template <typename Core>
class EffectAdapter : public AdaptedEffect<TwoKnobEffect<Core>> {};

/// For a core whose delay lines lie in the shared pool.
template <typename Core>
class EffectAdapter2 : public AdaptedEffect<TwoKnobMemoryEffect<Core>> {};

}  // namespace tesh::bramel::plugin::sivray::effects
