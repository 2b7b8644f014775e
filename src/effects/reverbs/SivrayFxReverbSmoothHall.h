// "Hall Reverb": two diffusers into a tank of four damped combs, whose taps go through two diffusers to the sides.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "effects/interfaces/BasicEffect.h"
#include "effects/interfaces/EffectLaw.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/reverbs/HallFlow.h"
#include "platform/CpuFeatures.h"
#include "platform/ZeroedPages.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Parameter 0 is the time, 1 the level of the wet sound, both from 0.0 to 1.0; the dry sound stays at full level. It
/// has its own memory, made at the first `activate` and kept. Must be reset once before it runs.
class SivrayFxReverbSmoothHall : public vimo::BasicEffect {
 public:
  SivrayFxReverbSmoothHall();

  void reset() override;
  void activate() override;
  unsigned parameterCount() const override { return 2; }
  void setParameter(unsigned index, float value) override;
  bool hasTail() const override { return false; }
  void processInt16(vimo::Int16Block in, vimo::Int16Block out, unsigned count) override;

 private:
  struct Settings {
    HallRow gains{};
    std::int32_t level = 0;  ///< Q15.
  };

  void runGrid(std::int16_t* left, std::int16_t* right, unsigned count);

  static const RunInLanes<HallFlow> runBaseline;
  static const RunInLanes<HallFlow> runAvx2;

  Relaxed<unsigned> decayKnob{0};
  Relaxed<unsigned> levelKnob{0};
  PendingSettings<Settings> pending{Settings{hallGains[0]}, true};
  HallFlow flow;
  platform::VectorSet widest = platform::bestVectorSet();
  platform::ZeroedArray<std::int16_t> memory;
  bool hasWritten = false;  ///< The memory has been written to since it was zero.
};

}  // namespace tesh::bramel::plugin::sivray::effects
