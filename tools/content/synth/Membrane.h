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
  double hard = 800.0;    ///< Modes above this frequency in Hz are excited less; low for a soft beater.
  double place = 0.3;     ///< Place of the stroke: 0 the centre, 1 the rim.
  double spread = 1.0;    ///< Exponent of the ratios; below 1 they lie closer together.
  double second = 0.0;    ///< Level of the second skin's mode.
  double interval = 1.3;  ///< Its ratio to the first.
  double contact = 0.0;   ///< Seconds during which the beater pushes the skin; the modes rise for as long.
};

/// Returns the modes. A `width` above 0 makes their levels differ between the channels.
std::vector<Mode> membraneModes(const MembraneSettings& settings, Dice& dice, double width);

}  // namespace sivray::content
