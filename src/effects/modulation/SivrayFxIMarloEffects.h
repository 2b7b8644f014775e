// The class of the Marlo family: chorus, phase and ensemble are three laws that it runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/modulation/MarloParts.h"

namespace tesh::bramel::plugin::sivray::effects {

/// `Law` is MarloChorus, MarloPhase or MarloEnsemble. Edit1 is the speed (the depth of the ensemble), Edit2 the spread.
/// It has no immediate mode: the smoothing of depth and spread always runs.
template <typename Law>
class SivrayFxIMarloEffects : public TwoKnobEffect<Law> {};

}  // namespace tesh::bramel::plugin::sivray::effects
