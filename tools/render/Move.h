// A movement of one value while the score plays, with every name already looked up.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace sivray::render {

/// What a move moves: a macro, or an engine parameter that no macro reaches.
enum class MoveTarget { macro, engineParameter };

struct Move {
  double seconds = 0.0;
  MoveTarget target = MoveTarget::macro;
  std::uint32_t index = 0;  ///< Macro number, or engine parameter id.
  float value = 0.0F;       ///< 0 to 1.
  int hostIndex = -1;       ///< The macro's number among the host's parameters; -1 for what hosts are not shown.
};

}  // namespace sivray::render
