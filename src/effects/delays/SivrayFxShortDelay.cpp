// The settings and the law of the short delay.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/delays/SivrayFxShortDelay.h"

#include "effects/delays/ShortDelayStep.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// Samples: the longest delay that a line can hold.
constexpr std::int32_t kMaxTime = 16383;

/// Q15 share of the longest delay: 5 / 32768 of it is 2 samples, the shortest delay that can be interpolated.
constexpr std::int32_t kLeastTimeShare = 5;

/// Largest loop gain by Time knob, Q15: 0.9375 up to the middle, then down a parabola to 0.797 at the longest time,
/// 30720 - 4608 * ((i - 63) / 64)^2, so that long echoes do not build up.
constexpr KnobTable levelScale = tableOf<std::int16_t>([](int i) {
  const int above = std::max(i - 63, 0);
  return (30720 * 8 - 9 * above * above) / 8;
});

}  // namespace

ShortDelayLaw::Settings ShortDelayLaw::settingsOf(const Knobs& knobs) {
  const std::int32_t share = std::max<std::int32_t>(valueAt(squareTable, knobs.edit1), kLeastTimeShare);
  return {mul15(share, kMaxTime), mul15(valueAt(convexTable, knobs.edit2), valueAt(levelScale, knobs.edit1))};
}

void ShortDelayLaw::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  stepAs<OneSample>(*this, &left, &right);
}

const RunInLanes<ShortDelayLaw> ShortDelayLaw::runBaseline = runLanes<Samples128>;

template class TwoKnobEffect<ShortDelayLaw>;

}  // namespace tesh::bramel::plugin::sivray::effects
