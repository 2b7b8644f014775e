// The compressor of the pads' effect list.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/dynamics/CompressorGain.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/PendingSettings.h"
#include "effects/interfaces/SivrayFx.h"
#include "effects/interfaces/SmoothedValue.h"

namespace tesh::bramel::plugin::sivray::effects {

/// "Compressor": Edit1 is the sensitivity, Edit2 the attack.
class SivrayFxCompressor : public SivrayFx {
 public:
  void process(StereoBlock& block, unsigned count) override;
  int setParameter(unsigned index, int value) override;
  void reset() override;
  void setImmediate(bool on) override { immediate = on; }
  void notify(int code) override;

 private:
  struct Settings {
    std::int32_t sens;
    std::int32_t attack;
  };

  static Settings settingsOf(int sensKnob, int attackKnob);

  template <bool kResting>
  void render(std::int16_t* left, std::int16_t* right, unsigned count);

  Relaxed<int> edit1 = 0;
  Relaxed<int> edit2 = 0;
  Settings live = settingsOf(0, 0);
  PendingSettings<Settings> pending{live, true};
  SmoothedValue sens;
  CompressorGain law;
  bool immediate = false;
};

}  // namespace tesh::bramel::plugin::sivray::effects
