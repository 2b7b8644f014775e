// The effect that leaves the sound as it is.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/SivrayFx.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Passes the block unchanged.
class SivrayFxBypass : public SivrayFx {
 public:
  void process(StereoBlock&, unsigned) override {}
  bool skip(unsigned) override { return true; }
  int setParameter(unsigned index, int value) override {
    return index == kEdit1 || index == kEdit2 ? knobOf(value) : 0;
  }
  void reset() override {}
  void setImmediate(bool) override {}
  void notify(int) override {}
};

}  // namespace tesh::bramel::plugin::sivray::effects
