// "Compressor": the compressor for single sounds, with a wide range of sensitivity.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/CompressorGain.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// What both compressors share: the sensitivity glides, the attack changes at once.
struct CompressorParts {
  struct Settings {
    std::int32_t sens;    ///< Q15.
    std::int32_t attack;  ///< Q15 share per sample.
  };

  void aim(const Settings& to, bool) { attack = to.attack; }
  static bool fitsLanes(const Settings&) { return true; }

  static constexpr unsigned kMemory = 0;
  bool isSilent(unsigned) const { return law.isSilent(); }
  void skip(const Settings& to, unsigned count) { law.skip(count, to.attack); }

  void eachSmoothed(const Settings& to, auto&& visit) { visit(sens, to.sens); }
  void derive() { law.setSens(sens.value()); }

  SmoothedValue sens;
  std::int32_t attack = 0;  ///< Of the lanes.
  CompressorGain law;
};

struct CompressorLaw : CompressorParts {
  static constexpr LawParts kParts{
      .start = Knobs{}, .aims = true, .glides = true, .derives = true, .lanes = LaneParts::avx2, .sleeps = true};

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Starts from silence: the gain comes up, and the sensitivity too.
  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static RunInLanes<CompressorLaw> runAvx2;
};

extern template class TwoKnobEffect<CompressorLaw>;

/// Edit1 is the sensitivity, Edit2 the attack.
class SivrayFxCompressor : public TwoKnobEffect<CompressorLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
