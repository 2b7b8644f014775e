// The position of a pop-up relative to its control.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel {

/// The first word is the side of the anchor, the second the alignment along that side.
enum class UIPopupDirection : std::int32_t {
  leftTop = 0,
  leftCentre = 1,
  leftBottom = 2,
  rightTop = 3,
  rightCentre = 4,
  rightBottom = 5,
  aboveLeft = 6,
  aboveCentre = 7,
  aboveRight = 8,
  belowLeft = 9,
  belowCentre = 10,
  belowRight = 11,
  over = 12,   ///< Centred on the anchor.
  corner = 13  ///< At the top left corner of the editor, without a margin.
};

}  // namespace tesh::bramel
