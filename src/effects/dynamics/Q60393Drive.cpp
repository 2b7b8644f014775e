// The drive's bending law.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/dynamics/Q60393Drive.h"

#include <algorithm>
#include <cstdlib>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"

namespace tesh::bramel::plugin::sivray::effects {

using namespace cofu::core;

namespace {

/// How far the wave stays straight with the drive at its least.
constexpr std::int32_t kHighestThreshold = 19660;

/// How strongly what stands above the threshold is bent, 15 fractional bits.
constexpr std::int32_t kBend = 26213;

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
      levelTarget = mul15(squareTable[i], 31489) + 1279;
      return knob;
    default:
      return 0;
  }
}

void Q60393Drive::reset() {
  drive.setNow(driveTarget);
  level.setNow(levelTarget);
  threshold.setNow(0);
  leftChannel = {};
  rightChannel = {};
}

template <bool kResting>
void Q60393Drive::render(std::int16_t* left, std::int16_t* right, unsigned count, std::int32_t driveTo,
                         std::int32_t levelTo) {
  const std::int32_t k = glideFactor(immediate);
  const std::int32_t thresholdTo = thresholdFor(driveTo);
  SmoothedValue driveNow = drive;
  SmoothedValue levelNow = level;
  SmoothedValue thresholdNow = threshold;
  Channel l = leftChannel;
  Channel r = rightChannel;

  const auto step = [&](Channel& channel, std::int16_t& sample) {
    const std::int32_t in = sample;
    const std::int32_t d = driveNow.value();
    const std::int32_t f = mul15(d, 23919);
    const std::int32_t z = saturate(in + mul15(leak(leak(channel.lastOutput)), f) + channel.preEmphasis);
    channel.preEmphasis = mulShift<13>(d, in);
    const std::int32_t c = z > 0 ? kBend : (z < 0 ? -kBend : 0);
    const std::int32_t e = std::max(std::abs(z) - thresholdNow.value(), 0);
    channel.lastOutput = z - mul15(mul15(e, e), c);
    sample = static_cast<std::int16_t>(mul15(levelNow.value(), channel.lastOutput));
  };

  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      driveNow.glide(driveTo, k);
      levelNow.glide(levelTo, k);
      thresholdNow.glide(thresholdTo, k);
    }
    step(l, left[i]);
    step(r, right[i]);
  }
  drive = driveNow;
  level = levelNow;
  threshold = thresholdNow;
  leftChannel = l;
  rightChannel = r;
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
