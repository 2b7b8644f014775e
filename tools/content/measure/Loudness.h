// Loudness and true peak by EBU R 128.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/levels/KitMeter.h"

namespace sivray::content {

// All but momentaryLoudness throw std::runtime_error when libebur128 has no memory.

/// Of the whole, in LUFS.
double integratedLoudness(const StereoSound& sound);

/// Of the loudest 400 ms, in LUFS.
double momentaryLoudness(const StereoSound& sound);

/// Loudness range by EBU Tech 3342, in LU.
double loudnessRange(const StereoSound& sound);

/// In dB of full scale. Slow: it looks between the samples.
double truePeak(const StereoSound& sound);

}  // namespace sivray::content
