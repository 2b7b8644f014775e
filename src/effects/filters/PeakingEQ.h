// "Peaking EQ": one bell in integers.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Peaking EQ": Edit1 is the frequency in semitones with 440 Hz at 61, Edit2 the gain from -15 to 15 dB.
class PeakingEQ {
 public:
  PeakingEQ();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 frequency, 1 gain, 2 Q (0.1 to 5.0, 1.0 at 64); the value is masked to 7 bits and given back. Other
  /// indices give 0. Any thread; the coefficients change at once, one after the other.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  /// Clears the filter memory.
  void reset() SIVRAY_NONBLOCKING;

 private:
  /// Filter memory of one channel, 9 bits above a sample.
  struct Memory {
    std::int32_t x1 = 0;
    std::int32_t x2 = 0;
    std::int32_t y1 = 0;
    std::int32_t y2 = 0;
  };

  /// The coefficients as the samples' loop needs them.
  struct Coefficients {
    std::int64_t b0;
    std::int64_t b1;
    std::int64_t b2;
    std::int64_t a1;
    std::int64_t a2;
  };

  void updateBandwidth();
  void updateAmplitude();
  void updateCoefficients();
  static void renderChannel(const Coefficients& k, Memory& memory, std::int16_t* samples, unsigned count);

  Relaxed<int> freqKnob{61};
  Relaxed<int> gainKnob{70};
  Relaxed<int> qKnob{64};
  Relaxed<float> omega;      ///< Centre in radians per sample.
  Relaxed<float> alpha;      ///< Half the bandwidth in the same measure.
  Relaxed<float> amplitude;  ///< Square root of the gain.

  /// Whole numbers with 24 fractional bits.
  Relaxed<float> b0;
  Relaxed<float> b1;
  Relaxed<float> b2;
  Relaxed<float> a1;
  Relaxed<float> a2;

  Memory left;
  Memory right;
};

}  // namespace tesh::bramel::plugin::sivray::effects
