// "Talking Mod": four resonators at the frequencies of a voice.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/filters/FormantLanes.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 chooses the vowel, Edit2 moves all bands up by up to a factor of 6. The output is mono.
class SivrayFxTalkingModulator : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;

  /// Clears the resonators and takes their frequencies back to 0.
  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;

 private:
  /// Frequency coefficients, 15 fractional bits.
  struct Targets {
    std::array<std::int32_t, kFormantBands> band{};
  };

  static Targets targetsOf(int formantKnob, int offsetKnob);
  bool restsAtTargets() const;
  void glide();
  void render(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  PendingSettings<Targets> pending;
  Targets live;
  std::array<SmoothedValue, kFormantBands> frequency;
  FormantBank<FormantLanes> bank;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
