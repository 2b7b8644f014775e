// "Ring Mod": the input times a sine carrier, which becomes constant at the lowest frequencies.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the frequency (up to 4134 Hz), Edit2 the balance. Models a ring modulator whose carrier is made of two
/// parabolas. Its output is twice as loud as the input and then limited.
struct Ringmod {
  static constexpr LawParts kParts{
      .start = Knobs{64, 64}, .glides = true, .lanes = LaneParts::baselineAndAvx2, .sleepsAfter = 0};

  struct Settings {
    std::int32_t frequency;  ///< Phase step per sample, in 2^-17 of a cycle.
    std::int32_t balance;    ///< Share of the modulated sound, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) { phase = 0; }
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<Ringmod> runBaseline;
  static const RunInLanes<Ringmod> runAvx2;

  bool isSilent(unsigned) const { return true; }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(balance, to.balance);
    visit(frequency, to.frequency);
  }

  /// Largest value of 30 bits: the carrier's 1.0 with its 15 fractional bits.
  static constexpr std::int32_t kCarrierOne = 1073741823;

  /// Share of the sine in the carrier (30 bits): it rises with the frequency and is full from 128 on.
  std::int32_t sineShare() const {
    const std::int64_t share = static_cast<std::int64_t>(frequency.state) << 8;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(share, -kCarrierOne, kCarrierOne));
  }

  SmoothedValue frequency;
  SmoothedValue balance;
  std::int32_t phase = 0;
};

extern template class TwoKnobEffect<Ringmod>;

}  // namespace tesh::bramel::plugin::sivray::effects
