// The ranges of the figures of recorded drums, by group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "content/measure/Figures.h"
#include "content/measure/Groups.h"

namespace sivray::content {

/// A figure's range over the hits of a group: 5 % of them lie below `lowest` and 5 % above `highest`.
struct Range {
  double lowest, quarter, middle, threeQuarters, highest;
};

using Targets = std::array<Range, kFigures>;

/// The targets by group, then by figure.
extern const std::array<Targets, kFigureGroups> kTargets;

/// By group: the median D of two recorded hits of different sets.
extern const std::array<double, kFigureGroups> kRecordedApart;

/// Returns the share of a group's recordings with a lower figure, 0 to 1, interpolated linearly between the range's
/// points; 0.025 below the range and 0.975 above it.
double placeIn(const Range& range, double value);

/// Whether a group's waves should match recordings in a figure. False for bleed (microphones at hats and cymbals pick
/// up other drums below 250 Hz), and for late figures of short drums, which measure the remaining noise.
bool isTelling(Group group, std::size_t figure);

/// A wave with at least this many figures outside their ranges does not sound like its group.
inline constexpr std::size_t kManyOutside = 6;

/// Whether a figure lies outside the range that holds 90 % of the recordings. False for a group without ranges.
bool isOutside(const Figures& figures, std::size_t figure, Group group);

/// Returns the number of figures outside their ranges.
std::size_t countOutside(const Figures& figures, Group group);

}  // namespace sivray::content
