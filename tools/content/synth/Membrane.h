// The modes of a struck skin.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "content/synth/Parts.h"
#include "content/synth/Random.h"

namespace sivray::content {

struct MembraneSettings {
  double hertz = 100.0;   ///< Of the lowest mode.
  double t60 = 0.4;       ///< Of the lowest mode, in seconds.
  double damp = 1.2;      ///< A mode of ratio r rings for t60 * r^-damp.
  double hard = 800.0;    ///< Where a soft beater stops exciting modes, in Hz.
  double place = 0.3;     ///< Where it is struck: 0 the centre, 1 the rim.
  double spread = 1.0;    ///< Exponent of the ratios; below 1 they draw together.
  double second = 0.0;    ///< Level of the second skin's answer.
  double interval = 1.3;  ///< Its ratio to the first.
};

/// `width` lets both channels hear the modes at different levels.
std::vector<Mode> membraneModes(const MembraneSettings& settings, Dice& dice, double width);

}  // namespace sivray::content
