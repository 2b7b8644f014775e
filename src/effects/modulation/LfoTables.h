// The speeds of the free-running oscillators over a knob.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace tesh::bramel::plugin::sivray::effects {

/// Phase steps per sample of a 32-bit phase that wraps: value * 44100 / 2^32 Hz. Knob 0 stands still.
extern const std::array<std::uint32_t, 128> lfoTable;

}  // namespace tesh::bramel::plugin::sivray::effects
