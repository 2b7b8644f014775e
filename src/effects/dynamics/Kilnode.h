// The tube stage: a curve of exponentials, mixed with the input.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/BasicEffect.h"
#include "platform/CpuFeatures.h"

namespace tesh::bramel::plugin::fxkit {

/// Processes samples by the tube curve, in place, each with its own drive and mix, four at once with AVX2. `count` is a
/// multiple of 4. There is no SSE2 version, because two exponentials at once take as long as two in turn.
void throughTubeAvx2(float* samples, const float* drives, const float* mixes, unsigned count) SIVRAY_NONBLOCKING;

/// A tube stage with one parameter, its gain (0.0 to 1.0), which sets drive and mix at once.
class Kilnode : public vimo::BasicEffect {
 public:
  Kilnode();

  /// Sets drive and mix to their targets.
  void reset() override;

  unsigned parameterCount() const override { return 1; }
  void setParameter(unsigned index, float value) override;
  void processFloat(vimo::FloatBlock in, vimo::FloatBlock out, unsigned count) override;

 private:
  sivray::effects::Relaxed<float> driveTarget = 0.0F;
  sivray::effects::Relaxed<float> mixTarget = 0.0F;
  float drive = 0.0F;
  float mix = 0.0F;
  bool hasAvx2 = platform::supports(platform::VectorSet::avx2);
};

}  // namespace tesh::bramel::plugin::fxkit
