// "Peaking EQ": one bell-shaped boost or cut, in integers.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the frequency in semitones, with 440 Hz at 61; Edit2 the gain from -15 to 15 dB. Nothing is smoothed.
/// Changing a knob computes a sine and powers on the calling thread.
struct PeakingEQ {
  static constexpr LawParts kParts{.start = Knobs{61, 70}, .aims = true, .lanes = LaneParts::avx2, .sleepsAfter = 0};

  /// Fractional bits of the state below a sample's, and of the coefficients.
  static constexpr int kInputShift = 9;
  static constexpr int kFractionBits = 24;

  /// Coefficients of a second-order section, 24 fractional bits. The first feedback coefficient equals `b1`.
  struct Settings {
    std::int64_t b0;
    std::int64_t b1;
    std::int64_t b2;
    std::int64_t a2;
  };

  /// One channel's last two inputs and outputs: 32-bit values with 9 fractional bits.
  struct Memory {
    std::int64_t x1 = 0;
    std::int64_t x2 = 0;
    std::int64_t y1 = 0;
    std::int64_t y2 = 0;

    bool operator==(const Memory&) const = default;
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) { *this = {}; }
  static void stepSide(const Settings& to, Memory& memory, std::int16_t& sample) SIVRAY_NONBLOCKING;
  void aim(const Settings& to, bool) { now = to; }
  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<PeakingEQ> runAvx2;

  bool isSilent(unsigned) const { return left == Memory{} && right == Memory{}; }
  void skip(const Settings&, unsigned) {}

  Settings now{};
  Memory left;
  Memory right;
};

extern template class TwoKnobEffect<PeakingEQ>;

}  // namespace tesh::bramel::plugin::sivray::effects
