// Scales waves of one category to one loudness, within limits on their peak.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Signal.h"

namespace sivray::content {

/// Returns the loudness of the loudest 80 ms, weighted by frequency as the ear does, in dB relative to a full-scale
/// square wave.
double loudnessOf(const Sound& sound);

/// Scales so that the loudness comes as close to `target` dB as a peak between -15 and -1 dB allows. If the sound is
/// too quiet at -1 dB, its peaks are soft-clipped by at most 3 dB. Also removes each channel's DC offset.
void level(Sound& sound, double target);

}  // namespace sivray::content
