// The types of macro sets by their numbers in files, and the ranges that are passed as boxed values.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::vimo {

enum class MacroSetType : std::uint32_t {
  linear = 0,
  linearFlipped = 1,
  quantized = 2,
  squared = 3,
  squaredFlipped = 4,
  logCurved = 5,
  logCurvedFlipped = 6,
  cubicCurve = 7,
  biquadCurve = 8,
  twoBinded = 9
};

/// A range.
struct tmm {
  float minimum = 0.0F;
  float maximum = 1.0F;
};

/// A range with a middle.
struct tmmm {
  float minimum = 0.0F;
  float middle = 0.5F;
  float maximum = 1.0F;
};

}  // namespace tesh::vimo
