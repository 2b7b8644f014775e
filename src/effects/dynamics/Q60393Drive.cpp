// The drive's bending law.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Q60393Drive.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// How far the wave stays straight with the drive at its least.
constexpr std::int32_t kHighestThreshold = 19660;

/// How strongly what stands above the threshold is bent, 15 fractional bits.
constexpr std::int32_t kBend = 26213;

/// The smoothed knobs of one sample.
struct Moment {
  Moment(const SmoothedValue& drive, const SmoothedValue& level, const SmoothedValue& threshold)
      : emphasis(StereoLanes::both(drive.value())),
        feedback(StereoLanes::both(cofu::core::mul15(drive.value(), 23919))),
        output(StereoLanes::both(level.value())),
        straight(StereoLanes::both(threshold.value())) {}

  StereoLanes emphasis;
  StereoLanes feedback;
  StereoLanes output;
  StereoLanes straight;  ///< How far the wave is left as it is.
};

/// Takes what stands above the threshold through a parabola. At z = 0 nothing does, so that its sign does not matter.
StereoLanes bent(StereoLanes z, const Moment& now) {
  const StereoLanes sign = signOf(z);
  const StereoLanes above = (withSign(z, sign) - now.straight).notBelowZero();
  return z - mul15(mul15(above, above), withSign(StereoLanes::both(kBend), sign));
}

std::int32_t thresholdFor(std::int32_t drive) { return std::max(kHighestThreshold - drive, 0); }

}  // namespace

Q60393Drive::Q60393Drive() {
  setEdit(0, 63);
  setEdit(1, 100);
  reset();
}

int Q60393Drive::setEdit(unsigned index, int value) {
  const int knob = value & 127;
  const auto i = static_cast<std::size_t>(knob);
  switch (index) {
    case 0:
      driveTarget = linearTable[i];
      return knob;
    case 1:
      levelTarget = cofu::core::mul15(squareTable[i], 31489) + 1279;
      return knob;
    default:
      return 0;
  }
}

void Q60393Drive::reset() {
  drive.setNow(driveTarget);
  level.setNow(levelTarget);
  threshold.setNow(0);
  preEmphasis = {};
  lastOutput = {};
}

template <bool kResting>
void Q60393Drive::render(std::int16_t* left, std::int16_t* right, unsigned count, std::int32_t driveTo,
                         std::int32_t levelTo) {
  const std::int32_t k = glideFactor(immediate);
  const std::int32_t thresholdTo = thresholdFor(driveTo);
  SmoothedValue driveNow = drive;
  SmoothedValue levelNow = level;
  SmoothedValue thresholdNow = threshold;
  StereoLanes pre = preEmphasis;
  StereoLanes last = lastOutput;
  Moment now(driveNow, levelNow, thresholdNow);
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      driveNow.glide(driveTo, k);
      levelNow.glide(levelTo, k);
      thresholdNow.glide(thresholdTo, k);
      now = Moment(driveNow, levelNow, thresholdNow);
    }
    const StereoLanes in = StereoLanes::of(left[i], right[i]);
    const StereoLanes z = (in + mul15(leakTwice(last), now.feedback) + pre).saturated();
    pre = (now.emphasis * in).shiftedRight<13>();
    last = bent(z, now);
    const StereoLanes out = mul15(now.output, last);
    left[i] = static_cast<std::int16_t>(out.left());
    right[i] = static_cast<std::int16_t>(out.right());
  }
  drive = driveNow;
  level = levelNow;
  threshold = thresholdNow;
  preEmphasis = pre;
  lastOutput = last;
}

void Q60393Drive::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const unsigned run = std::min(count - start, kControlGrid);
    const std::int32_t driveTo = driveTarget;
    const std::int32_t levelTo = levelTarget;
    std::int16_t* const left = block.left + start;
    std::int16_t* const right = block.right + start;
    if (drive.restsAt(driveTo) && level.restsAt(levelTo) && threshold.restsAt(thresholdFor(driveTo))) {
      render<true>(left, right, run, driveTo, levelTo);
    } else {
      render<false>(left, right, run, driveTo, levelTo);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
