// "LPF", "HPF" and "BPF": one state-variable filter in three modes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/RealTime.h"
#include "effects/filters/TolvanLaw.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the cutoff, Edit2 the resonance. It has no immediate mode: changes ramp across 64 samples.
class SivrayFxTolvanFilter : public SivrayFx {
 public:
  /// 0 lowpass, 1 highpass, any other bandpass.
  explicit SivrayFxTolvanFilter(int mode);

  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;

  /// Clears the filter and takes the settings afresh; the ramps go on from where they are.
  void reset() override;
  void setImmediate(bool) override {}
  void notify(int code) override;

  /// Clears the filter memory and nothing else. Audio thread.
  virtual void clearFilter() SIVRAY_NONBLOCKING;

 private:
  struct Settings {
    std::int32_t cutoff = 0;     ///< 31 fractional bits.
    std::int32_t resonance = 0;  ///< 31 fractional bits.
    std::int32_t inputGain = 0;  ///< Q15.
  };

  static Settings settingsOf(int cutoffKnob, int resonanceKnob);
  void aimRamps();
  void renderGrid(std::int16_t* left, std::int16_t* right, unsigned count);

  const TolvanMode mode;
  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  PendingSettings<Settings> pending;
  Settings live;
  TolvanRamp frequency;
  TolvanRamp damping;
  TolvanState<StereoLanes> state;
};

}  // namespace tesh::bramel::plugin::sivray::effects
