// A timed change of one value while the score plays, with its name already resolved.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace sivray::render {

/// The target of a move: a macro, or an engine parameter that no macro controls.
enum class MoveTarget { macro, engineParameter };

struct Move {
  double seconds = 0.0;
  MoveTarget target = MoveTarget::macro;
  std::uint32_t index = 0;  ///< Macro number, or engine parameter id.
  float value = 0.0F;       ///< 0 to 1.
  int hostIndex = -1;       ///< Index among the host's parameters; -1 if hosts do not see it.
};

}  // namespace sivray::render
