// Brings waves of one category to one loudness, within what a peak below full scale allows.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Signal.h"

namespace sivray::content {

/// The loudness of the loudest 80 ms, in dB against a full-scale square, weighted as the ear hears it.
double loudnessOf(const Sound& sound);

/// Scales so that the loudness comes as near to `target` dB as it can with the peak between -9 and -1 dB. Where it is
/// too quiet at the higher end, its peaks are bent over, by at most 6 dB.
/// The constant part of each channel goes too.
void level(Sound& sound, double target);

}  // namespace sivray::content
