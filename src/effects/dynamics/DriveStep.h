// The law of the drive, as a template over the arithmetic of an instruction set.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/Q60393Drive.h"

namespace tesh::bramel::plugin::sivray::effects {

/// One sample of both channels. `Arithmetic` has
///   static StereoLanes saturated(StereoLanes);
///   static StereoLanes above(StereoLanes z, StereoLanes threshold);  // |z| - threshold, not below 0
template <typename Arithmetic>
void stepDrive(Q60393Drive& law, std::int16_t& left, std::int16_t& right) {
  const StereoLanes in = StereoLanes::of(left, right);
  const StereoLanes feedback = StereoLanes::both(cofu::core::mul15(law.drive.value(), Q60393Drive::kFeedback));
  const StereoLanes z = Arithmetic::saturated(in + law.preEmphasis + mul15(leakTwice(law.lastOutput), feedback));
  law.preEmphasis = (StereoLanes::both(law.drive.value()) * in).shiftedRight<13>();
  // What lies above the threshold goes through a parabola. At z = 0 nothing does, so that its sign does not matter.
  const StereoLanes above = Arithmetic::above(z, StereoLanes::both(law.threshold.value()));
  const StereoLanes bend = withSign(StereoLanes::both(Q60393Drive::kBend), signOf(z));
  law.lastOutput = z - mul15(mul15(above, above), bend);
  const StereoLanes out = mul15(StereoLanes::both(law.level.value()), law.lastOutput);
  left = static_cast<std::int16_t>(out.left());
  right = static_cast<std::int16_t>(out.right());
}

}  // namespace tesh::bramel::plugin::sivray::effects
