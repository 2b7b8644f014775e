// The all-pass chain of the phaser and its knobs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/modulation/Q60393Phaser.h"

#include <algorithm>

#include "core/FixedPoint.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/modulation/LfoTables.h"
#include "effects/modulation/TriangleLfo.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

/// Two-sided knobs read a one-sided table and take their own sign.
std::int32_t withSignOf(int knob, std::int32_t magnitude) { return knob < 0 ? -magnitude : magnitude; }

/// What one sample of both channels needs besides the stages.
struct Moment {
  StereoLanes depth;
  StereoLanes manual;
  StereoLanes resonance;
  StereoLanes mix;
  StereoLanes dryGain;
};

/// The coefficient of the all-pass stages. It needs no limit: `manual` lies in 0 .. 32767, `depth` in 0 .. 16101.
StereoLanes coefficientAt(StereoLanes phase, const Moment& now) {
  const StereoLanes triangle = withSign(phase, signOf(phase)).shiftedRightUnsigned<16>();
  const StereoLanes held = triangle - triangle.shiftedRight<15>();
  return now.manual - mul15(now.depth, held);
}

/// One sample `x` through the chain; the output is not yet limited.
template <typename Stages>
StereoLanes step(Stages& s, const Moment& now, StereoLanes phase, StereoLanes x) {
  const StereoLanes a = coefficientAt(phase, now);
  const Stages old{leakTwice(s[0]), leakTwice(s[1]), leakTwice(s[2]), leakTwice(s[3]), leakTwice(s[4])};
  const auto stage = [&](std::size_t j) { return (mul15(a, old[j]) - mul15(s[j - 1], a) + old[j - 1]).saturated(); };
  s[0] = (x + leak(mul15(now.resonance, s[2]))).saturated();
  s[1] = stage(1);
  s[2] = leakTwice(leakTwice(stage(2)));
  s[3] = stage(3);
  s[4] = stage(4);
  return mul15(s[4], now.mix) + mul15(now.dryGain, x);
}

}  // namespace

Q60393Phaser::Q60393Phaser() {
  constexpr std::array<int, 5> kStartKnobs{30, 63, 120, 40, 64};
  for (unsigned i = 0; i < kStartKnobs.size(); ++i) {
    setEdit(i, kStartKnobs[i]);
  }
  reset();
}

int Q60393Phaser::setEdit(unsigned index, int value) {
  const int knob = index < 3 ? value & 127 : std::clamp(value, -127, 127);
  const auto i = static_cast<std::size_t>(std::abs(knob));
  switch (index) {
    case 0:
      lfoStep = static_cast<std::int32_t>(lfoTable[i]);
      return knob;
    case 1:
      depthTarget = cofu::core::mul15(linearTable[i], 16102);
      return knob;
    case 2: {
      const std::int32_t t = cofu::core::mul15(linearTable[i], 32767);
      manualTarget = cofu::core::mul15(t, t);
      return knob;
    }
    case 3:
      resonanceTarget = withSignOf(knob, cofu::core::mul15(convexTable[i], 32440));
      return knob;
    case 4:
      mixTarget = withSignOf(knob, linearTable[i]);
      return knob;
    default:
      return 0;
  }
}

Q60393Phaser::Targets Q60393Phaser::targets() const { return {depthTarget, manualTarget, resonanceTarget, mixTarget}; }

void Q60393Phaser::glide(const Targets& to, std::int32_t k) {
  depth.glide(to.depth, k);
  manual.glide(to.manual, k);
  resonance.glide(to.resonance, k);
  mix.glide(to.mix, k);
}

bool Q60393Phaser::restsAt(const Targets& to) const {
  return depth.restsAt(to.depth) && manual.restsAt(to.manual) && resonance.restsAt(to.resonance) && mix.restsAt(to.mix);
}

void Q60393Phaser::reset() {
  const Targets to = targets();
  depth.setNow(to.depth);
  manual.setNow(to.manual);
  resonance.setNow(to.resonance);
  mix.setNow(to.mix);
  stages = {};
  phase = 0;
}

template <bool kResting>
void Q60393Phaser::render(std::int16_t* left, std::int16_t* right, unsigned count, const Targets& to) {
  const auto moment = [&] {
    return Moment{StereoLanes::both(depth.value()), StereoLanes::both(manual.value()),
                  StereoLanes::both(resonance.value()), StereoLanes::both(mix.value()),
                  StereoLanes::both(32767 - std::abs(mix.value()))};
  };
  const std::int32_t k = glideFactor(immediate);
  const StereoLanes increment = StereoLanes::both(lfoStep);
  StereoLanes phases = StereoLanes::of(phase, cofu::core::wrapAdd(phase, kRightPhaseLead));
  Stages now = stages;
  Moment knobs = moment();
  for (unsigned i = 0; i < count; ++i) {
    if constexpr (!kResting) {
      glide(to, k);
      knobs = moment();
    }
    phases = phases + increment;
    const StereoLanes out = step(now, knobs, phases, StereoLanes::both((left[i] + right[i]) >> 1));
    out.storeSaturated(left[i], right[i]);
  }
  stages = now;
  phase = phases.left();
}

void Q60393Phaser::process(StereoBlock& block, unsigned count) {
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const unsigned run = std::min(count - start, kControlGrid);
    const Targets to = targets();
    if (restsAt(to)) {
      render<true>(block.left + start, block.right + start, run, to);
    } else {
      render<false>(block.left + start, block.right + start, run, to);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
