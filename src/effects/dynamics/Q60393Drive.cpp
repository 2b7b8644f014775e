// The settings and the bending curve of the drive.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Q60393Drive.h"

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Threshold at no drive: 0.6 of full scale.
constexpr std::int32_t kHighestThreshold = 19660;

/// How strongly what lies above the threshold is bent: 0.8.
constexpr std::int32_t kBend = 26213;

/// Share of the last output that comes back at full drive: 0.73.
constexpr std::int32_t kFeedback = 23919;

/// Takes what lies above the threshold through a parabola. At z = 0 nothing does, so that its sign does not matter.
StereoLanes bent(StereoLanes z, StereoLanes threshold) {
  const StereoLanes sign = signOf(z);
  const StereoLanes above = (withSign(z, sign) - threshold).notBelowZero();
  return z - mul15(mul15(above, above), withSign(StereoLanes::both(kBend), sign));
}

}  // namespace

Q60393Drive::Settings Q60393Drive::settingsOf(const Knobs& knobs) {
  const std::int32_t drive = valueAt(linearTable, knobs.edit1);
  return {drive, kDriveLevel.at(knobs.edit2), std::max(kHighestThreshold - drive, 0)};
}

void Q60393Drive::step(const Settings&, std::int16_t& left, std::int16_t& right) {
  const StereoLanes in = StereoLanes::of(left, right);
  const StereoLanes feedback = StereoLanes::both(cofu::core::mul15(drive.value(), kFeedback));
  const StereoLanes z = (in + mul15(leakTwice(lastOutput), feedback) + preEmphasis).saturated();
  preEmphasis = (StereoLanes::both(drive.value()) * in).shiftedRight<13>();
  lastOutput = bent(z, StereoLanes::both(threshold.value()));
  const StereoLanes out = mul15(StereoLanes::both(level.value()), lastOutput);
  left = static_cast<std::int16_t>(out.left());
  right = static_cast<std::int16_t>(out.right());
}

template class TwoKnobEffect<Q60393Drive>;

}  // namespace tesh::bramel::plugin::sivray::effects
