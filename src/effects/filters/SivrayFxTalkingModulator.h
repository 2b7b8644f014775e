// "Talking Mod": four resonators at the frequencies of a spoken vowel.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects {

inline constexpr std::size_t kFormantBands = 4;

/// Models a vocal tract by four parallel two-pole resonators, whose band outputs are summed.
struct TalkingModulatorLaw {
  static constexpr LawParts kParts{.glides = true, .lanes = LaneParts::avx2, .sleepsAfter = 0};

  using Registers = cofu::registers::Registers128;

  struct Settings {
    std::array<std::int32_t, kFormantBands> band{};  ///< Frequency coefficients, Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Clears the resonators and sets their frequencies to 0.
  void reset(const Settings&) { *this = {}; }
  bool restsAt(const Settings& to, bool immediate) const SIVRAY_NONBLOCKING;
  void glide(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static bool fitsLanes(const Settings&) { return true; }
  static const RunInLanes<TalkingModulatorLaw> runAvx2;

  bool isSilent(unsigned) const { return Registers::isZero(band) && Registers::isZero(low); }
  void skip(const Settings&, unsigned) {}

  std::array<SmoothedValue, kFormantBands> frequency;
  Registers::Integers band = Registers::zero();  ///< A lane for each resonator; FormantStep.h moves them.
  Registers::Integers low = Registers::zero();
};

extern template class TwoKnobEffect<TalkingModulatorLaw>;

/// Edit1 selects the vowel, Edit2 scales all band frequencies by a factor of up to 6. The output is mono.
class SivrayFxTalkingModulator : public TwoKnobEffect<TalkingModulatorLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
