// What the settings of an effect are made of.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tesh::bramel::plugin::sivray::effects {

/// The highest value of a knob; all its bits are set.
inline constexpr int kTopKnob = 127;

/// The value of a knob that is set to `value`, which wraps.
constexpr int knobOf(int value) { return value & kTopKnob; }

/// All that the settings of an effect depend on.
struct Knobs {
  int edit1 = 0;           ///< 0 to kTopKnob.
  int edit2 = 0;           ///< 0 to kTopKnob.
  int tempoTenths = 1200;  ///< Tenths of a beat per minute.
};

}  // namespace tesh::bramel::plugin::sivray::effects
