// The three formants of the talking modulator over its Formant knob.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace detail {

inline constexpr std::array<int, 5> kFormantKnobs{0, 32, 64, 96, kTopKnob};

/// Straight lines between the frequencies at the five knob values, truncated. All frequencies are positive.
constexpr KnobTable makeFormantTable(const std::array<int, 5>& frequencies) {
  return makeKnobTable([&](int knob) {
    std::size_t line = 0;
    while (line + 2 < kFormantKnobs.size() && knob >= kFormantKnobs[line + 1]) {
      ++line;
    }
    const int width = kFormantKnobs[line + 1] - kFormantKnobs[line];
    const int along = knob - kFormantKnobs[line];
    return (frequencies[line] * (width - along) + frequencies[line + 1] * along) / width;
  });
}

}  // namespace detail

/// Frequency coefficients of the three upper bands, 15 fractional bits, before the Offset knob scales them.
inline constexpr KnobTable formant1 = detail::makeFormantTable({4558, 3227, 3227, 1926, 1926});
inline constexpr KnobTable formant2 = detail::makeFormantTable({9185, 11171, 8192, 6454, 16384});
inline constexpr KnobTable formant3 = detail::makeFormantTable({17128, 17128, 16880, 16632, 21100});

}  // namespace tesh::bramel::plugin::sivray::effects
