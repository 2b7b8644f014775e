// Compares figures with the targets of their group.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Targets.h"

#include <algorithm>

namespace sivray::content {

double placeIn(const Range& range, double value) {
  struct Point {
    double value, place;
  };
  const std::array<Point, 5> points{{{range.lowest, 0.05},
                                     {range.quarter, 0.25},
                                     {range.middle, 0.5},
                                     {range.threeQuarters, 0.75},
                                     {range.highest, 0.95}}};
  constexpr double kBelowAll = 0.025;
  if (value < range.lowest) {
    return kBelowAll;
  }
  if (value > range.highest) {
    return 1.0 - kBelowAll;
  }
  const auto above = std::ranges::find_if(points, [=](const Point& point) { return point.value > value; });
  const auto same = std::ranges::find_if(points, [=](const Point& point) { return point.value >= value; });
  if (same->value == value) {  // Several points may have this value.
    return 0.5 * (same->place + (above - 1)->place);
  }
  const Point& below = *(above - 1);
  return below.place + (value - below.value) / (above->value - below.value) * (above->place - below.place);
}

bool isTelling(Group group, std::size_t figure) {
  switch (static_cast<Figure>(figure)) {
    case Figure::energySub:
    case Figure::energyBass:
    case Figure::energyLow:
    case Figure::lowFall20:
      return group != Group::closedHat && group != Group::openHat && group != Group::crash && group != Group::ride;
    case Figure::lateCentroid:
      return group == Group::openHat || group == Group::crash || group == Group::ride;
    default:
      return true;
  }
}

bool isOutside(const Figures& figures, std::size_t figure, Group group) {
  const auto index = static_cast<std::size_t>(group);
  if (index >= kFigureGroups) {
    return false;
  }
  const Range& range = kTargets[index][figure];
  return figures[figure] < range.lowest || figures[figure] > range.highest;
}

std::size_t countOutside(const Figures& figures, Group group) {
  std::size_t count = 0;
  for (std::size_t figure = 0; figure < kFigures; ++figure) {
    count += isOutside(figures, figure, group) ? 1U : 0U;
  }
  return count;
}

}  // namespace sivray::content
