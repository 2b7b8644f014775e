// Builds the thirty effects.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <memory>

#include "effects/EffectTable.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"

namespace tesh::bramel::plugin::sivray::effects {

/// All effects by type id.
using EffectSet = std::array<std::unique_ptr<SivrayFx>, kEffectTypeCount>;

/// Builds every effect, registers those that borrow delay memory with `memory`, and calls wake, reset and sleep on
/// each, all in a fixed order: it determines which memory bank each effect gets first.
EffectSet makeEffects(SivrayFxMemoryAssigner& memory);

}  // namespace tesh::bramel::plugin::sivray::effects
