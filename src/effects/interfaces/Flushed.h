// Keeps single-precision feedback out of the range where its arithmetic is slow.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray::effects {

/// Rounds what is too small to matter to 0, so that no value becomes subnormal: adding 1.0 keeps 24 bits below 1.0,
/// subtracting it leaves the rest. `Floats` is `float` or a vector of it.
template <typename Floats>
Floats flushed(Floats x) {
  const Floats lifted = x + 1.0F;
  return lifted - 1.0F;
}

}  // namespace tesh::bramel::plugin::sivray::effects
