// The hall as one of the thirty effects, asleep while nothing sounds.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/FastEffectAdapter.h"
#include "effects/interfaces/SivrayFx.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the time, Edit2 the level. It has no immediate mode, and `isAwake` always returns false.
class SivrayFxReverbSmoothHallAdapter : public SivrayFx {
 public:
  SivrayFxReverbSmoothHallAdapter();

  void process(StereoBlock& block, unsigned count) override { adapter.processInt16(block, block, count); }
  bool skip(unsigned) override { return adapter.isAsleep(); }
  int setParameter(unsigned index, int value) override;
  void reset() override { adapter.reset(); }
  void wake() override { adapter.activate(); }
  void sleep() override { adapter.deactivate(); }
  bool isAwake() const override { return adapter.isActive(); }
  void setImmediate(bool) override {}
  void notify(int code) override;

 private:
  vimo::FastEffectAdapter adapter;
};

}  // namespace tesh::bramel::plugin::sivray::effects
