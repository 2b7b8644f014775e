// The leak of core/FixedPoint.h in fewer steps, for values that its product cannot wrap.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray::effects {

/// (v * -32766) >> 15, which is v / 16384 - v: turns the sign and takes a little off, so that a loop dies out. 32-bit
/// values must lie within -65536 .. 65536, where core's leak does not wrap; 64-bit values may be any that fit 47 bits.
template <typename Integer>
constexpr Integer shortLeak(Integer v) {
  return (v >> 14) - v;
}

}  // namespace tesh::bramel::plugin::sivray::effects
