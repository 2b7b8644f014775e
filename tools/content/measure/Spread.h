// Whether the waves of a group differ from each other as recorded drums do, and are recognised as their drum.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ostream>
#include <span>

#include "content/measure/Report.h"

namespace sivray::content {

/// Returns the median D over all pairs of these hits. 0 for fewer than two.
double apart(std::span<const Picture* const> pictures);

/// Returns the median D over the pairs of these recordings that are of different sets. 0 if there is no such pair.
double apartOf(std::span<const Reference* const> hits);

/// Prints a line for each group, for the waves and for the recordings of `half`: the medians of rise and crest; the
/// median D of two; the distance from a recorded hit to our nearest wave, and to the nearest of as many recordings of
/// the other half (of other sets, for both halves); the share that the five nearest recordings of other sets vote to be
/// that drum, acoustic or machine; the share in stereo, and the greatest loss in a mono sum.
void printSpread(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                 Half half);

/// Prints for each group the figures that tell waves from recordings of `half`: those in which a wave is higher than a
/// recording in less than a fifth or more than four fifths of all pairs.
void printTells(std::ostream& out, std::span<const MeasuredWave> waves, std::span<const Reference> references,
                Half half);

}  // namespace sivray::content
