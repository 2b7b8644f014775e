// The law of the drive over the registers of an instruction set. SampleLanes.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/Q60393Drive.h"
#include "effects/interfaces/StereoLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// One sample of both channels.
template <typename R>
void stepDrive(Q60393Drive& law, std::int16_t& left, std::int16_t& right) {
  using Lanes = StereoIn<R>;
  const Lanes in = Lanes::of(left, right);
  const Lanes lastOutput = law.lastOutput;
  const Lanes feedback = Lanes::both(cofu::core::mul15(law.drive.value(), Q60393Drive::kFeedback));
  const Lanes z = (in + Lanes(law.preEmphasis) + mul15(leakTwice(lastOutput), feedback)).saturated();
  law.preEmphasis = (Lanes::both(law.drive.value()) * in).template shiftedRight<13>();
  // The excess over the threshold follows a parabola. At z = 0 there is none, so the sign of zero does not matter.
  const Lanes above = (magnitude(z) - Lanes::both(law.threshold.value())).notBelowZero();
  const Lanes output = z - mul15(mul15(above, above), withSignOf(Lanes::both(Q60393Drive::kBend), z));
  law.lastOutput = output;
  const Lanes out = mul15(Lanes::both(law.level.value()), output);
  left = static_cast<std::int16_t>(out.left());
  right = static_cast<std::int16_t>(out.right());
}

}  // namespace tesh::bramel::plugin::sivray::effects
