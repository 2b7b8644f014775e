// "Room Reverb": the small network beside the dry sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SivrayFxMemoryUser.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/reverbs/ReverbNetwork.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the time, Edit2 the level of the wet sound; the dry sound stays at full level.
class SivrayFxReverb : public SivrayFx, public SivrayFxMemoryUser {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;
  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;
  std::size_t requiredSamples() const override { return ReverbNetwork::kRequiredSamples; }

 private:
  /// Q15 gains.
  struct Settings {
    std::int32_t feedback = 0;
    std::int32_t level = 0;
  };

  void glide();
  void runGrid(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> edit1{0};
  Relaxed<int> edit2{0};
  PendingSettings<Settings> pending;
  Settings live;
  SmoothedValue feedback;
  SmoothedValue level;
  std::int32_t inputGain = 0;  ///< Follows the level, Q15.
  ReverbNetwork network;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
