// Whether the waves of a group differ as recorded drums do, and are read as the drum that they are.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <span>

#include "content/measure/Report.h"

namespace sivray::content {

/// Returns D of two of these hits in the middle of all pairs. 0 for fewer than two.
double apart(std::span<const Picture* const> pictures);

/// Returns D of two of these recordings of different sets in the middle of all pairs. 0 if there is no such pair.
double apartOf(std::span<const Reference* const> hits);

/// Prints a line for each group, of ours and of the recordings of `half`: rise and crest in the middle; D of two in the
/// middle; how far a recorded hit is from our nearest wave, and from the nearest of as many recordings of the other
/// half (of other sets, for both halves); the share that the five nearest recordings of other sets vote to be that
/// drum, acoustic or machine; the share in stereo, and the most that a mono sum loses.
void printSpread(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                 Half half);

/// Prints for each group the figures by which waves and recordings of `half` can be told apart: those in which a wave
/// is higher than a recording in less than a fifth or more than four fifths of all pairs.
void printTells(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                Half half);

}  // namespace sivray::content
