// The hall as one of the thirty effects, asleep while nothing sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "effects/interfaces/FastEffectAdapter.h"
#include "effects/interfaces/KnobTables.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/reverbs/SivrayFxReverbSmoothHall.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the time, Edit2 the level. It has no immediate mode, and `isAwake` always returns false.
class SivrayFxReverbSmoothHallAdapter : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override { adapter.processInt16(block, block, count); }
  bool skip(unsigned) override { return adapter.isAsleep(); }
  int setParameter(unsigned index, int value) override {
    if (index != kEdit1 && index != kEdit2) {
      return 0;
    }
    adapter.setParameter(index - kEdit1, static_cast<float>(value) * kKnobToUnit);
    return value;
  }
  void reset() override { adapter.reset(); }
  void wake() override { adapter.activate(); }
  void sleep() override { adapter.deactivate(); }
  bool isAwake() const override { return adapter.isActive(); }
  void setImmediate(bool) override {}
  void notify(int code) override {
    if (code == kRestart) {
      reset();
    }
  }

 private:
  vimo::FastEffectAdapter adapter{std::make_unique<SivrayFxReverbSmoothHall>()};
};

}  // namespace tesh::bramel::plugin::sivray::effects
