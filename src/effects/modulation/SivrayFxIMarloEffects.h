// The class of the Marlo family: chorus, phase and ensemble are three laws that it runs.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/modulation/MarloParts.h"

namespace tesh::bramel::plugin::sivray::effects {

/// What the three laws share.
struct MarloLaw {
  static constexpr LawParts kParts{.start = Knobs{},
                                   .otherRestart = kMarloRestart,
                                   .aims = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleeps = true};

  using Settings = MarloSettings;

  static Settings settingsOf(const Knobs& knobs) { return marloSettingsOf(knobs); }
  void aim(const Settings& to, bool) { settings = to; }
  static bool fitsLanes(const Settings&) { return true; }

  static constexpr unsigned kMemory = MarloLines::kMemory;
  bool isSilent(unsigned count) const { return lines.isSilent(count); }

  MarloLines lines;
  MarloSettings settings;  ///< Of the lanes.
};

/// `Law` is MarloChorus, MarloPhase or MarloEnsemble. Edit1 is the speed (the depth of the ensemble), Edit2 the spread.
/// It has no immediate mode: the smoothing of depth and spread always runs.
template <typename Law>
class SivrayFxIMarloEffects : public TwoKnobEffect<Law> {};

}  // namespace tesh::bramel::plugin::sivray::effects
