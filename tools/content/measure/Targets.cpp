// Compares figures with the targets of their group.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Targets.h"

namespace sivray::content {

bool isOutside(const Figures& figures, std::size_t figure, Group group) {
  const Range& range = kTargets[static_cast<std::size_t>(group)][figure];
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
