// The coefficients of the windowed sinc, one by one.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CFirLpfCoeffs.h"

#include <cmath>
#include <numbers>

namespace tesh::bramel::vst {

CFirLpfCoeffs::CFirLpfCoeffs() { updateCutoff(); }

double CFirLpfCoeffs::value(std::int32_t i) const {
  if (i >= length) {
    return 0.0;
  }
  const double d = static_cast<double>(i) - centre;
  if (d == 0.0) {
    return gain * normalisedCutoff;
  }
  const double angle = d * angularCutoff;
  return std::sin(angle) / angle * gain * normalisedCutoff * CKaiserWindowCoeffs::value(i);
}

void CFirLpfCoeffs::setSampleRate(std::int32_t newRate) {
  rate = newRate;
  updateCutoff();
}

void CFirLpfCoeffs::setCutoff(std::int32_t hertz) {
  cutoff = hertz;
  updateCutoff();
}

void CFirLpfCoeffs::setGain(double decibels) { gain = std::pow(10.0, decibels * 0.05); }

void CFirLpfCoeffs::updateCutoff() {
  const double inverseRate = 1.0 / static_cast<double>(rate);
  normalisedCutoff = 2.0 * static_cast<double>(cutoff) * inverseRate;
  angularCutoff = std::numbers::pi * normalisedCutoff;
}

}  // namespace tesh::bramel::vst
