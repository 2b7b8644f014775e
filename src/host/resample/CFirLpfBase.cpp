// Passes a design on to the filter's coefficients.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFirLpfBase.h"

namespace tesh::bramel::vst {

void CFirLpfBase::design(std::int32_t length, std::int32_t rate, std::int32_t cutoffHz, double gainDb) {
  coefficients.setSampleRate(rate);
  coefficients.setLength(length);
  coefficients.setCutoff(cutoffHz);
  coefficients.setGain(gainDb);
}

}  // namespace tesh::bramel::vst
