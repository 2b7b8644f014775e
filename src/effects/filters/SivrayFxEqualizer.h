// "EQ": a high and a low shelf in single precision.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the low gain, Edit2 the high gain; both change nothing at 62 to 66.
class SivrayFxEqualizer : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;

  /// Puts the smoothed coefficients on their targets; the filter memory stays.
  void reset() override { smoothed = live; }
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;

 private:
  struct Coefficients {
    float lowFeedforwardOld = 0.0F;
    float lowFeedforward = 0.0F;
    float lowFeedback = 0.0F;
    float highFeedback1 = 0.0F;
    float highGain = 0.0F;
    float highFeedback2 = 0.0F;

    bool operator==(const Coefficients&) const = default;
  };

  /// Filter memory of one channel.
  struct Memory {
    float a = 0.0F;
    float b = 0.0F;
    float c = 0.0F;
  };

  Coefficients glided() const;
  void renderGrid(StereoBlock block, unsigned count);
  static void renderChannel(const Coefficients& k, Memory& memory, std::int16_t* samples, unsigned count);

  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  PendingSettings<Coefficients> pending;
  Coefficients live;
  Coefficients smoothed;
  Memory left;
  Memory right;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
