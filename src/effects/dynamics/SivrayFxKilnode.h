// The tube stage as an effect of the list.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "effects/dynamics/Kilnode.h"
#include "effects/interfaces/FastEffectAdapter.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/SivrayFx.h"

namespace tesh::bramel::plugin::sivray::effects {

/// "Kiln Force": Edit1 is the gain of the tube; Edit2 is not used. It sleeps during silence.
class SivrayFxKilnode : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override { adapter.processInt16(block, block, count); }
  bool skip(unsigned) override { return adapter.isAsleep(); }

  /// Index 2 is masked to 7 bits and returned; other indices return 0.
  int setParameter(unsigned index, int value) override {
    if (index != kEdit1) {
      return 0;
    }
    const int knob = knobOf(value);
    adapter.setParameter(0, static_cast<float>(knob) * kKnobToUnit);
    return knob;
  }

  /// The tube holds no sound; its smoothed values keep moving to their targets.
  void reset() override {}

  /// Immediate mode sets the smoothed values to their targets once.
  void setImmediate(bool on) override {
    if (on) {
      adapter.reset();
    }
  }

  void notify(int) override {}

 private:
  vimo::FastEffectAdapter adapter{std::make_unique<fxkit::Kilnode>()};
};

}  // namespace tesh::bramel::plugin::sivray::effects
