// Phaser: four all-pass stages per channel on a mono input, moved by a triangle.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/StereoBlock.h"
#include "effects/interfaces/StereoLanes.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Phaser": Edit1 is the speed, Edit2 the depth.
class Q60393Phaser {
 public:
  Q60393Phaser();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 speed, 1 depth, 2 manual (masked to 7 bits), 3 resonance, 4 dry/wet (limited to -127 .. 127). Gives the
  /// value that was taken, 0 for other indices. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  void reset() SIVRAY_NONBLOCKING;

  bool immediate = false;

 private:
  /// The stage memories of both channels: the input of the first all-pass and the outputs of all four.
  using Stages = std::array<StereoLanes, 5>;

  /// What the knobs set, apart from the speed.
  struct Targets {
    std::int32_t depth;
    std::int32_t manual;
    std::int32_t resonance;
    std::int32_t mix;
  };

  Targets targets() const;
  void glide(const Targets& to, std::int32_t k);
  bool restsAt(const Targets& to) const;
  template <bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count, const Targets& to);

  Relaxed<std::int32_t> lfoStep;
  Relaxed<std::int32_t> depthTarget;
  Relaxed<std::int32_t> manualTarget;
  Relaxed<std::int32_t> resonanceTarget;
  Relaxed<std::int32_t> mixTarget;
  SmoothedValue depth;
  SmoothedValue manual;
  SmoothedValue resonance;
  SmoothedValue mix;
  std::int32_t phase = 0;
  Stages stages{};
};

}  // namespace tesh::bramel::plugin::sivray::effects
