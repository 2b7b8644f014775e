// "Grain Shifter": records a short piece of the sound and repeats it, on a grid of beats.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the speed of the grid, Edit2 the balance from dry to grains, which are mono. Two lines take turns: one
/// records for half a cycle while the other goes on repeating its last grain.
class SivrayFxGrainShifter : public SivrayFx, public SivrayFxMemoryUser {
 public:
  SivrayFxGrainShifter() { updateSettings(); }

  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;

  /// 0 and below stop the clock, with grains of the longest kind.
  void setTempo(int tempoTenths) override;
  void restartPhase() override { realign = true; }
  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;
  std::size_t requiredSamples() const override { return 2 * kLineLength; }

 private:
  struct Settings {
    std::uint32_t step = 0;  ///< Of the clock per sample; a cycle is 2^32.
    std::int64_t delay = 0;  ///< Length of a grain in samples.
    std::int32_t mix = 0;    ///< Q15.
  };

  /// What moves from sample to sample.
  struct Clock {
    std::uint32_t phase = 0;
    SmoothedValue recordFade;  ///< 1.0 while line A records.
    SmoothedValue outputFade;  ///< 1.0 while line B sounds.
    SmoothedValue mix;
    std::int64_t delay = 0;  ///< Samples, 15 fractional bits.
  };

  static constexpr unsigned kLineLength = 131072;
  static constexpr unsigned kMask = kLineLength - 1;

  void updateSettings();
  void renderGrid(StereoBlock block, unsigned start, unsigned end);
  template <bool kMoving>
  void render(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  Relaxed<std::int32_t> tempo{15360};  ///< Beats per minute, 7 fractional bits.
  Relaxed<std::uint32_t> grainStart;   ///< Phase at which a restart sets the clock; takes effect at once.
  PendingSettings<Settings> pending;
  Settings live;
  Clock clock;
  std::int16_t* lines = nullptr;  ///< Line A, then line B.
  unsigned writeIndex = 0;
  bool realign = false;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
