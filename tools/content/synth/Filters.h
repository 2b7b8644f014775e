// Second-order filters in double precision.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/synth/Signal.h"

namespace sivray::content {

/// A biquad. Frequencies in Hz are limited to 5 Hz and 0.49 of the sample rate.
class Biquad {
 public:
  static Biquad lowPass(double hertz, double q = 0.7071067811865476);
  static Biquad highPass(double hertz, double q = 0.7071067811865476);
  /// Its gain at the centre is 1.
  static Biquad bandPass(double hertz, double q);
  static Biquad highShelf(double hertz, double decibels);
  /// A resonator: a unit impulse makes it ring with amplitude 1, falling 60 dB in `t60` seconds.
  static Biquad resonator(double hertz, double t60);

  /// The filter's memory for one signal, or for several side by side in a vector.
  template <typename Value>
  struct State {
    Value z1{}, z2{};
  };

  template <typename Value>
  Value next(const Value& x, State<Value>& state) const {
    const Value y = b0 * x + state.z1;
    state.z1 = b1 * x - a1 * y + state.z2;
    state.z2 = b2 * x - a2 * y;
    return y;
  }

  double next(double x) { return next(x, own); }

  /// Filters in place, starting from silence.
  void run(Signal& signal) const;
  void run(Sound& sound) const;

  /// Filters with several filters in series. One pass over the samples, because a filter waits only for its own
  /// previous sample and the processor can overlap the filters.
  template <typename... Filters>
  static void runInTurn(Signal& signal, Filters... filters) {
    for (double& sample : signal) {
      ((sample = filters.next(sample)), ...);
    }
  }

 private:
  double b0 = 1.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0;
  State<double> own;
};

/// The tuning of a state-variable filter: the tangent of half its angular frequency. Filters of the same frequency
/// share it.
class Tuning {
 public:
  /// Returns the tuning for a frequency, limited to 10 Hz to 20 kHz.
  double to(double hertz);

 private:
  double tunedTo = 0.0;
  double tangent = 0.0;
};

/// A state-variable filter whose frequency may change at every frame.
class SweepFilter {
 public:
  struct Outputs {
    double low, band, high;
  };

  /// Filters one sample. `g` is of a Tuning; `q` is 0.5 or more. The band output has a peak gain of 1.
  Outputs next(double x, double g, double q) {
    const double damping = 1.0 / q;
    const double high = (x - (damping + g) * s1 - s2) / (1.0 + g * (g + damping));
    const double band = g * high + s1;
    const double low = g * band + s2;
    s1 = g * high + band;
    s2 = g * band + low;
    return {low, band * damping, high};
  }

 private:
  double s1 = 0.0, s2 = 0.0;
};

}  // namespace sivray::content
