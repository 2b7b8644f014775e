// Left and right side by side, in the form that laws keep between two samples. StereoLanes.h computes with them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Two 32-bit values in the even lanes of a register, where one instruction multiplies 32 by 32 bits. The odd lanes may
/// hold anything.
struct StereoWords {
  using Registers = cofu::registers::Registers128;

  Registers::Integers v = Registers::zero();

  static StereoWords of(std::int32_t left, std::int32_t right) { return {Registers::four32(left, 0, right, 0)}; }
  static StereoWords both(std::int32_t value) { return {Registers::all32(value)}; }
  std::int32_t left() const { return Registers::first32(v); }
  std::int32_t right() const { return Registers::third32(v); }
  bool isZero() const { return (left() | right()) == 0; }
};

}  // namespace tesh::bramel::plugin::sivray::effects
