// The two shelves of the equalizer by knob value, coefficients with 15 fractional bits.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// One zero and one pole.
struct LowShelfRow {
  std::int16_t feedforwardOld;
  std::int16_t feedforward;
  std::int16_t feedback;
};

/// A gain into one pole, then a second pole.
struct HighShelfRow {
  std::int16_t feedback1;
  std::int16_t gain;
  std::int16_t feedback2;
};

/// By Low Gain; rows 62 to 66 change nothing.
extern const std::array<LowShelfRow, 128> lowShelfTable;

/// By High Gain; rows 62 to 66 change nothing.
extern const std::array<HighShelfRow, 128> highShelfTable;

}  // namespace tesh::bramel::plugin::sivray::effects
