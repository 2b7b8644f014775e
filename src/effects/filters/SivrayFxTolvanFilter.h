// "LPF", "HPF" and "BPF": one state-variable filter in three modes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/StereoWords.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The filter's output.
enum class TolvanMode { kLowpass, kHighpass, kBandpass };

/// A coefficient on a straight line across 64 samples, 23 fractional bits, never below 0.
struct TolvanRamp {
  std::int32_t target = 0;
  StereoWords now;
  StereoWords step;

  /// Starts at the last target.
  void aimAt(std::int32_t newTarget) {
    now = StereoWords::both(target);
    step = StereoWords::both((newTarget - target) >> 6);
    target = newTarget;
  }
};

/// Common to the three modes: settings, ramps and state.
struct TolvanFilter {
  /// Full scale of the filter's values.
  static constexpr std::int32_t kFull24 = 16777215;

  struct Settings {
    std::int32_t cutoff = 0;     ///< 31 fractional bits.
    std::int32_t resonance = 0;  ///< 31 fractional bits.
    std::int32_t inputGain = 0;  ///< Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Clears the sound; the ramps continue from where they are.
  void reset(const Settings&) {
    band = {};
    low = {};
  }
  void aim(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;

  bool isSilent(unsigned) const { return band.isZero() && low.isZero(); }
  /// In the next `aim`, the ramps start at their targets, whatever their values are now.
  void skip(const Settings&, unsigned) {}

  static bool fitsLanes(const Settings&) { return true; }

  TolvanRamp frequency;
  TolvanRamp damping;
  StereoWords inputGain;
  StereoWords band;  ///< 23 fractional bits.
  StereoWords low;
};

template <TolvanMode kMode>
struct TolvanLaw : TolvanFilter {
  static constexpr LawParts kParts{.aims = true, .lanes = LaneParts::avx2, .sleepsAfter = 0};

  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  static const RunInLanes<TolvanLaw> runAvx2;
};

template <>
const RunInLanes<TolvanLaw<TolvanMode::kLowpass>> TolvanLaw<TolvanMode::kLowpass>::runAvx2;
template <>
const RunInLanes<TolvanLaw<TolvanMode::kHighpass>> TolvanLaw<TolvanMode::kHighpass>::runAvx2;
template <>
const RunInLanes<TolvanLaw<TolvanMode::kBandpass>> TolvanLaw<TolvanMode::kBandpass>::runAvx2;

extern template class TwoKnobEffect<TolvanLaw<TolvanMode::kLowpass>>;
extern template class TwoKnobEffect<TolvanLaw<TolvanMode::kHighpass>>;
extern template class TwoKnobEffect<TolvanLaw<TolvanMode::kBandpass>>;

/// Edit1 is the cutoff, Edit2 the resonance. It has no immediate mode: changes ramp across 64 samples.
template <TolvanMode kMode>
class SivrayFxTolvanFilter : public TwoKnobEffect<TolvanLaw<kMode>> {};

}  // namespace tesh::bramel::plugin::sivray::effects
