// Two parameters that belong to no pad: the tempo, and a trigger that does nothing. They can be set but not read.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/SivrayMultiEffector.h"
#include "parameters/IParameter.h"

namespace tesh::bramel::plugin::sivray {

/// Passes the tempo to the master effect. Reading any value gives -1.
class GlobalParameterDispatcher : public IParameter {
 public:
  explicit GlobalParameterDispatcher(effects::SivrayMultiEffector& multiEffector) : effect(multiEffector) {}

  int count() const override { return 2; }

  /// Index 0 is the tempo in tenths of a beat per minute, 0 to 3000.
  int setValue(int index, std::int32_t* value) override {
    if (index != 0) {
      return 0;
    }
    effect.setTempo(*value);
    return *value;
  }

  std::int32_t value(int) const override { return -1; }
  std::string format(int, std::int32_t) const override { return {}; }

  const ParameterRow* info(int index) const override {
    return index == 0 ? &kTempo : (index == 1 ? &kTrigger : &kNoRow);
  }

  int indexOf(std::string_view) const override { return -1; }

 private:
  static constexpr ParameterRow kTempo{"BPMx10", 0, 3000, 1200};
  static constexpr ParameterRow kTrigger{"Trigger", 0, 0, 0};
  static constexpr ParameterRow kNoRow{"---", 0, 0, 0};

  effects::SivrayMultiEffector& effect;
};

}  // namespace tesh::bramel::plugin::sivray
