// Loudness and true peak by EBU R 128.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/levels/KitMeter.h"

namespace sivray::content {

struct Loudness {
  double integrated = 0.0;  ///< Of the whole, in LUFS.
  double momentary = 0.0;   ///< Of the loudest 400 ms, in LUFS.
  double truePeak = 0.0;    ///< In dB of full scale.
};

/// Throws std::runtime_error when libebur128 has no memory.
Loudness loudnessOf(const StereoSound& sound);

}  // namespace sivray::content
