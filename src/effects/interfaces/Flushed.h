// Keeps single-precision feedback out of the subnormal range, where arithmetic is slow.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray::effects {

/// Rounds negligible values to 0, so that none becomes subnormal: adding 1.0 keeps 24 bits below 1.0, and subtracting
/// it leaves the rest. `Floats` is `float` or a vector of it.
template <typename Floats>
Floats flushed(Floats x) {
  const Floats lifted = x + 1.0F;
  return lifted - 1.0F;
}

}  // namespace tesh::bramel::plugin::sivray::effects
