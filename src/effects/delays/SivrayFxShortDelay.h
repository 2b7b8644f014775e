// "Short Delay": two lines whose echoes cross from side to side.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the time, 2 to 16382 samples; Edit2 the level of the echoes, which takes the input back by its half.
class SivrayFxShortDelay : public SivrayFx, public SivrayFxMemoryUser {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;
  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;
  std::size_t requiredSamples() const override { return 2 * kLineLength; }

 private:
  struct Settings {
    std::int32_t time = 0;   ///< Samples.
    std::int32_t level = 0;  ///< Q15.
  };

  static constexpr unsigned kLineLength = 16384;
  static constexpr unsigned kMask = kLineLength - 1;

  void runGrid(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  PendingSettings<Settings> pending;
  Settings live;
  SmoothedValue level;
  SmoothedValue time;
  std::int16_t* lines = nullptr;  ///< The line that feeds the right side, then the one that feeds the left.
  unsigned writeIndex = 0;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
