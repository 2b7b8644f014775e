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
extern const std::array<Targets, kGroups> kTargets;

/// A wave with this many figures or more outside their ranges is no drum of its group.
inline constexpr std::size_t kManyOutside = 6;

bool isOutside(const Figures& figures, std::size_t figure, Group group);

/// Returns how many figures lie outside the range of nine tenths of the recordings.
std::size_t countOutside(const Figures& figures, Group group);

}  // namespace sivray::content
