// The per-sample law of the state-variable filter, on both channels at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/filters/FilterLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Which of its values the filter gives out.
enum class TolvanMode { kLowpass, kHighpass, kBandpass };

/// A coefficient on its straight way across 64 samples, 23 fractional bits, never below 0.
struct TolvanRamp {
  std::int32_t target = 0;
  std::int32_t now = 0;
  std::int32_t step = 0;

  /// Starts at the last target.
  void aimAt(std::int32_t newTarget) {
    now = target;
    step = (newTarget - target) >> 6;
    target = newTarget;
  }
};

/// v * -8388606 / 2^23 for 24-bit values, as v / 2^22 - v.
template <typename Lanes>
Lanes leak23(Lanes v) {
  return v.template shiftedRight<22>() - v;
}

/// The state pairs, 23 fractional bits.
template <typename Lanes>
struct TolvanState {
  Lanes band;
  Lanes low;

  /// Takes one input sample pair times the input gain on the 24-bit scale, and gives the value of `mode` on that scale.
  template <TolvanMode mode>
  Lanes step(Lanes input, Lanes damping, Lanes frequency) {
    const Lanes a = leak23(leak23(band));
    const Lanes b = leak23(leak23(low));
    const Lanes high = limited24(input - mulShift23(a, damping) - b);
    band = limited24(mulShift23(high, frequency) + a);
    low = limited24(mulShift23(band, frequency) + b);
    return mode == TolvanMode::kLowpass ? low : (mode == TolvanMode::kHighpass ? high : band);
  }
};

/// Filters `count` samples in place; the ramps go on with each.
template <TolvanMode mode, typename Lanes>
void renderTolvan(TolvanState<Lanes>& state, TolvanRamp& damping, TolvanRamp& frequency, std::int32_t inputGain,
                  std::int16_t* left, std::int16_t* right, unsigned count) {
  TolvanState<Lanes> s = state;
  Lanes dampingNow = Lanes::both(damping.now);
  Lanes frequencyNow = Lanes::both(frequency.now);
  const Lanes dampingStep = Lanes::both(damping.step);
  const Lanes frequencyStep = Lanes::both(frequency.step);
  const Lanes gain = Lanes::both(inputGain);
  for (unsigned i = 0; i < count; ++i) {
    const Lanes input = (Lanes::of(left[i], right[i]) * gain).template shiftedRight<6>();
    const Lanes out = s.template step<mode>(input, dampingNow, frequencyNow);
    storeSaturated(out.template shiftedRight<9>(), left[i], right[i]);
    dampingNow = dampingNow + dampingStep;
    frequencyNow = frequencyNow + frequencyStep;
  }
  state = s;
  damping.now = dampingNow.left();
  frequency.now = frequencyNow.left();
}

}  // namespace tesh::bramel::plugin::sivray::effects
