// The decimator's counter and mix.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxDecimator.h"

#include <algorithm>

#include "core/FixedPoint.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

int SivrayFxDecimator::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  const auto i = static_cast<std::size_t>(knob);
  switch (index) {
    case 0:
      pending.post(decimatorSteps[i]);
      return knob;
    case 1:
      wet = linearTable[i];
      return knob;
    default:
      return 0;
  }
}

void SivrayFxDecimator::reset() {
  holdLeft = 0;
  holdRight = 0;
  counter = 0;
}

void SivrayFxDecimator::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    pending.takeInto(step);
    const std::int32_t wetNow = wet;
    const std::int32_t dryNow = 32767 - wetNow;
    const unsigned end = std::min(count, start + kControlGrid);
    for (unsigned i = start; i < end; ++i) {
      const std::int32_t left = block.left[i];
      const std::int32_t right = block.right[i];
      counter += step;
      if (counter > 65535) {
        counter &= 65535;
        holdLeft = std::max(left, -32767);
        holdRight = std::max(right, -32767);
      }
      block.left[i] = static_cast<std::int16_t>(saturate(mul15(dryNow, left) + mul15(holdLeft, wetNow)));
      block.right[i] = static_cast<std::int16_t>(saturate(mul15(dryNow, right) + mul15(holdRight, wetNow)));
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
