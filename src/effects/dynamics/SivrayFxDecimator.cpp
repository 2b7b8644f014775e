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
    std::int32_t wetLeft = mul15(holdLeft, wetNow);
    std::int32_t wetRight = mul15(holdRight, wetNow);
    for (unsigned i = start; i < end; ++i) {
      const std::int32_t left = block.left[i];
      const std::int32_t right = block.right[i];
      counter += step;
      if (counter > 65535) {
        counter &= 65535;
        holdLeft = std::max(left, -32767);
        holdRight = std::max(right, -32767);
        wetLeft = mul15(holdLeft, wetNow);
        wetRight = mul15(holdRight, wetNow);
      }
      // The two gains make up 32767, so that the sums keep to -32767 .. 32767 without a limit.
      block.left[i] = static_cast<std::int16_t>(mul15(dryNow, left) + wetLeft);
      block.right[i] = static_cast<std::int16_t>(mul15(dryNow, right) + wetRight);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
