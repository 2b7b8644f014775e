// Scales the waves of a category to one loudness, within limits on their peak.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Signal.h"

namespace sivray::content {

/// Returns the loudness of the loudest 80 ms, with a frequency weighting for the ear, in dB relative to a full-scale
/// square wave.
double loudnessOf(const Sound& sound);

/// Scales so that the loudness is as close to `target` dB as a peak between -15 and -1 dB allows. A sound that is too
/// quiet at -1 dB is soft-clipped by at most 3 dB. Also removes each channel's DC offset.
void level(Sound& sound, double target);

}  // namespace sivray::content
