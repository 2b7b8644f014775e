// Chorus and flanger in one: a short delay that a triangle moves, with feedback on the upper part of its knob.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// "Chorus/Flanger": Edit1 is the speed, Edit2 the depth.
class SivrayFxChorusFlanger : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;
  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;

 private:
  static constexpr unsigned kLineLength = 1024;

  struct Settings {
    std::int32_t lfoStep = 0;
    std::int32_t feedback = 0;
    std::int32_t wet = 0;
  };

  struct Channel {
    std::array<std::int16_t, kLineLength> line{};
    std::int32_t follow = 0;  ///< The smoothed triangle, 0 to 32767.
  };

  template <bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count);

  Relaxed<int> edit1 = 0;
  Relaxed<int> edit2 = 0;
  Settings live;
  PendingSettings<Settings> pending;
  SmoothedValue feedback;
  SmoothedValue wet;
  std::int32_t phase = 0;
  std::uint32_t writeIndex = 0;
  Channel leftChannel;
  Channel rightChannel;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
