// "Ring Mod": the input times a sine, which becomes a constant at the lowest frequencies.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the frequency (up to 4134 Hz), Edit2 the balance. Models a ring modulator with a carrier made of two
/// parabolas; its output is twice as loud as the input and then limited.
struct Ringmod {
  static constexpr Knobs kStart{64, 64};

  struct Settings {
    std::int32_t frequency;  ///< Phase step per sample, in 2^-17 of a cycle.
    std::int32_t balance;    ///< Share of the modulated sound, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) { phase = 0; }
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return true; }
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(balance, to.balance);
    visit(frequency, to.frequency);
  }

  SmoothedValue frequency;
  SmoothedValue balance;
  std::int32_t phase = 0;
};

extern template class TwoKnobEffect<Ringmod>;

}  // namespace tesh::bramel::plugin::sivray::effects
