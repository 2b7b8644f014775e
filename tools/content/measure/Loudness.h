// Loudness and true peak by EBU R 128.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/levels/KitMeter.h"

namespace sivray::content {

// All functions but momentaryLoudness throw std::runtime_error when libebur128 has no memory.

/// Returns the loudness of the whole sound, in LUFS.
double integratedLoudness(const StereoSound& sound);

/// Returns the loudness of the loudest 400 ms, in LUFS.
double momentaryLoudness(const StereoSound& sound);

/// Returns the loudness range by EBU Tech 3342, in LU.
double loudnessRange(const StereoSound& sound);

/// Returns the true peak in dB of full scale. Slow, because it interpolates between the samples.
double truePeak(const StereoSound& sound);

}  // namespace sivray::content
