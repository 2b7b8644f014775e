// The sampling steps of the decimator over its frequency knob.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Steps of the 16-bit counter per sample; a sample is taken when it wraps: value * 44100 / 65536 Hz.
extern const std::array<std::uint16_t, 128> decimatorSteps;

}  // namespace tesh::bramel::plugin::sivray::effects
