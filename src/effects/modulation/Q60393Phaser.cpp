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

using namespace cofu::core;

namespace {

/// Two-sided knobs read a one-sided table and take their own sign.
std::int32_t withSignOf(int knob, std::int32_t magnitude) { return knob < 0 ? -magnitude : magnitude; }

std::int32_t leakTwice(std::int32_t v) { return leak(leak(v)); }

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
      depthTarget = mul15(linearTable[i], 16102);
      return knob;
    case 2: {
      const std::int32_t t = mul15(linearTable[i], 32767);
      manualTarget = mul15(t, t);
      return knob;
    }
    case 3:
      resonanceTarget = withSignOf(knob, mul15(convexTable[i], 32440));
      return knob;
    case 4:
      mixTarget = withSignOf(knob, linearTable[i]);
      return knob;
    default:
      return 0;
  }
}

Q60393Phaser::Targets Q60393Phaser::targets() const { return {depthTarget, manualTarget, resonanceTarget, mixTarget}; }

Q60393Phaser::Moment Q60393Phaser::moment() const {
  return {depth.value(), manual.value(), resonance.value(), mix.value(), 32767 - std::abs(mix.value())};
}

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
  left = {};
  right = {};
  phase = 0;
}

std::int16_t Q60393Phaser::step(Stages& s, const Moment& now, std::int32_t phase, std::int32_t x) {
  const std::int32_t tri = std::min(triangle(phase), 32767);
  const std::int32_t a = saturate(now.manual - mul15(now.depth, tri));
  const Stages old{leakTwice(s[0]), leakTwice(s[1]), leakTwice(s[2]), leakTwice(s[3]), leakTwice(s[4])};
  const auto stage = [&](std::size_t j) { return saturate(mul15(a, old[j]) - mul15(s[j - 1], a) + old[j - 1]); };
  s[0] = saturate(x + leak(mul15(now.resonance, s[2])));
  s[1] = stage(1);
  s[2] = leakTwice(leakTwice(stage(2)));
  s[3] = stage(3);
  s[4] = stage(4);
  return static_cast<std::int16_t>(saturate(mul15(s[4], now.mix) + mul15(now.dryGain, x)));
}

void Q60393Phaser::process(StereoBlock& block, unsigned count) {
  const std::int32_t k = glideFactor(immediate);
  for (unsigned start = 0; start < count; start += kControlGrid) {
    const unsigned end = std::min(count, start + kControlGrid);
    const Targets to = targets();
    const std::int32_t increment = lfoStep;
    const bool resting = restsAt(to);
    for (unsigned i = start; i < end; ++i) {
      if (!resting) {
        glide(to, k);
      }
      const Moment now = moment();
      phase = wrapAdd(phase, increment);
      const std::int32_t x = (block.left[i] + block.right[i]) >> 1;
      block.left[i] = step(left, now, phase, x);
      block.right[i] = step(right, now, wrapAdd(phase, kRightPhaseLead), x);
    }
  }
}

}  // namespace tesh::bramel::plugin::sivray::effects
