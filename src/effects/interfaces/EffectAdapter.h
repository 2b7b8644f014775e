// Makes a SivrayFx of an effect's law whose class has the name of a core and no effect interface.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Returns the given value for indices that belong to the multi-effector and mean nothing to an effect.
template <typename Effect>
class AdaptedEffect : public Effect {
 public:
  int setParameter(unsigned index, int value) override {
    return index < kEdit1 ? value : Effect::setParameter(index, value);
  }
};

template <typename Core>
class EffectAdapter : public AdaptedEffect<TwoKnobEffect<Core>> {};

/// For a core whose delay lines are in the shared pool.
template <typename Core>
class EffectAdapter2 : public AdaptedEffect<TwoKnobMemoryEffect<Core>> {};

}  // namespace tesh::bramel::plugin::sivray::effects
