// The ranges of the figures of recorded drums, by group.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "content/measure/Figures.h"
#include "content/measure/Groups.h"

namespace sivray::content {

/// A figure's range over the hits of a group: a twentieth of them lie below `lowest` and a twentieth above `highest`.
struct Range {
  double lowest, quarter, middle, threeQuarters, highest;
};

using Targets = std::array<Range, kFigures>;

/// The targets by group, then by figure.
extern const std::array<Targets, kFigureGroups> kTargets;

/// D of two recorded hits of different sets, in the middle, by group.
extern const std::array<double, kFigureGroups> kRecordedApart;

/// Returns the share of a group's recordings whose figure is lower, 0 to 1, on straight lines between the range's
/// points. Beyond its ends it is 0.025 and 0.975.
double placeIn(const Range& range, double value);

/// Whether waves should have a group's figure as recordings do. Not bleed, which is what microphones at hats and
/// cymbals hear of other drums below 250 Hz, and not what short drums leave of a late moment.
bool isTelling(Group group, std::size_t figure);

/// A wave with this many figures or more outside their ranges is no drum of its group.
inline constexpr std::size_t kManyOutside = 6;

/// Whether a figure lies outside the range of nine tenths of the recordings. False for a group without ranges.
bool isOutside(const Figures& figures, std::size_t figure, Group group);

/// Returns how many figures are outside.
std::size_t countOutside(const Figures& figures, Group group);

}  // namespace sivray::content
