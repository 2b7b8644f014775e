// The rates of the oversampled filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/COversamplingFilterCoeffs.h"

namespace tesh::bramel::vst {

void COversamplingFilterCoeffs::setSampleRate(std::int32_t newRate) {
  baseRate = newRate;
  CFirLpfCoeffs::setSampleRate(static_cast<std::int32_t>(oversampling * static_cast<double>(newRate)));
}

void COversamplingFilterCoeffs::setOversampling(std::int32_t times) {
  oversampling = static_cast<double>(times);
  setSampleRate(baseRate);
}

}  // namespace tesh::bramel::vst
