// "Talking Mod": four resonators at the frequencies of a spoken vowel.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/filters/FormantLanes.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a vocal tract by four two-pole resonators side by side, whose band outputs are summed.
struct TalkingModulatorLaw {
  static constexpr LawParts kParts{.glides = true, .lanes = LaneParts::avx2, .sleeps = true};

  struct Settings {
    std::array<std::int32_t, kFormantBands> band{};  ///< Frequency coefficients, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Clears the resonators and takes their frequencies back to 0.
  void reset(const Settings&) { *this = {}; }
  bool restsAt(const Settings& to, bool immediate) const SIVRAY_NONBLOCKING;
  void glide(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;
  void step(const Settings&, std::int16_t& left, std::int16_t& right) {
    const FormantLanes f =
        FormantLanes::of({frequency[0].value(), frequency[1].value(), frequency[2].value(), frequency[3].value()});
    left = static_cast<std::int16_t>(cofu::core::saturate(bank.step((left + right) >> 1, f)));
    right = left;
  }

  static bool fitsLanes(const Settings&) { return true; }
  static unsigned runAvx2(TalkingModulatorLaw& law, std::int16_t* left, std::int16_t* right,
                          unsigned count) SIVRAY_NONBLOCKING;

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return bank.band.isZero() && bank.low.isZero(); }
  void skip(const Settings&, unsigned) {}

  std::array<SmoothedValue, kFormantBands> frequency;
  FormantBank<FormantLanes> bank;
};

extern template class TwoKnobEffect<TalkingModulatorLaw>;

/// Edit1 chooses the vowel, Edit2 moves all bands up by up to a factor of 6. The output is mono.
class SivrayFxTalkingModulator : public TwoKnobEffect<TalkingModulatorLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
