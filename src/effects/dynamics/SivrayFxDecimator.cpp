// The settings, the counter and the mix of the decimator.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/SivrayFxDecimator.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Steps of the 16-bit counter per sample: five for the highest rates, then down a parabola to 1000 Hz at the knob's
/// end.
constexpr auto stepTable = tableOf<std::uint16_t>([](int knob) {
  constexpr std::array<int, 5> kFinest{65535, 50000, 39000, 30000, 23000};
  constexpr int kCoarsest = 1486;
  constexpr int kSpan = 18514;
  const int rest = kTopKnob - knob;
  return knob < 5 ? valueAt(kFinest, knob) : kCoarsest + kSpan * rest * rest / kTopKnobSquared;
});

}  // namespace

SivrayFxDecimator::Settings SivrayFxDecimator::settingsOf(const Knobs& knobs) {
  return {valueAt(stepTable, knobs.edit1), valueAt(linearTable, knobs.edit2)};
}

void SivrayFxDecimator::aim(const Settings& to, bool) {
  wetLeft = mul15(holdLeft, to.wet);
  wetRight = mul15(holdRight, to.wet);
}

void SivrayFxDecimator::step(const Settings& to, std::int16_t& left, std::int16_t& right) {
  counter += to.step;
  if (counter > 65535) {
    counter &= 65535;
    holdLeft = std::max<std::int32_t>(left, -kFullScale);
    holdRight = std::max<std::int32_t>(right, -kFullScale);
    aim(to, false);
  }
  // The two gains add up to 32767, so the sums stay within -32767 .. 32767 without limiting.
  const std::int32_t dry = kFullScale - to.wet;
  left = static_cast<std::int16_t>(mul15(dry, left) + wetLeft);
  right = static_cast<std::int16_t>(mul15(dry, right) + wetRight);
}

template class TwoKnobEffect<SivrayFxDecimator>;

}  // namespace tesh::bramel::plugin::sivray::effects
