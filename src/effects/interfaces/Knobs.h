// The knob values from which an effect's settings are computed.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray::effects {

/// The highest value of a knob: 127, all bits of its 7.
inline constexpr int kTopKnob = 127;

/// `value` reduced to the range of a knob; it wraps.
constexpr int knobOf(int value) { return value & kTopKnob; }

/// Everything that an effect's settings depend on.
struct Knobs {
  int edit1 = 0;           ///< 0 to kTopKnob.
  int edit2 = 0;           ///< 0 to kTopKnob.
  int tempoTenths = 1200;  ///< Tenths of a beat per minute.
};

}  // namespace tesh::bramel::plugin::sivray::effects
