// The window's shape for a stop-band depth, and the Bessel function that it is built from.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/CKaiserWindowCoeffs.h"

#include <algorithm>
#include <cmath>

namespace tesh::bramel::vst {

namespace {

/// The window's shape parameter beta for a stop-band depth in dB, by Kaiser's published formula.
double betaFor(double attenuationDb) {
  if (attenuationDb <= 21.0) {
    return 0.0;
  }
  if (attenuationDb < 50.0) {
    return 0.5842 * std::pow(attenuationDb - 21.0, 0.4) + 0.07886 * (attenuationDb - 21.0);
  }
  return 0.1102 * (attenuationDb - 8.7);
}

}  // namespace

CKaiserWindowCoeffs::CKaiserWindowCoeffs() {
  CKaiserWindowCoeffs::setLength(length);
  setAttenuation(80.0);
}

void CKaiserWindowCoeffs::setLength(std::int32_t n) {
  length = n;
  centre = static_cast<double>(n - 1) / 2.0;
  inverseSpan = n > 1 ? 1.0 / static_cast<double>(n - 1) : 0.0;
}

double CKaiserWindowCoeffs::value(std::int32_t i) const {
  if (i >= length) {
    return 0.0;
  }
  const double r = 2.0 * (static_cast<double>(i) - centre) * inverseSpan;
  return besselI0(beta * std::sqrt(std::max(0.0, 1.0 - r * r))) * inverseI0;
}

void CKaiserWindowCoeffs::setAttenuation(double decibels) {
  beta = betaFor(decibels);
  inverseI0 = 1.0 / besselI0(beta);
}

void CKaiserWindowCoeffs::setSeriesTerms(std::int32_t n) {
  seriesTerms = n;
  inverseI0 = 1.0 / besselI0(beta);
}

/// 1 + the sum of ((x / 2)^k / k!)^2 over k from 1 to seriesTerms.
double CKaiserWindowCoeffs::besselI0(double x) const {
  double sum = 1.0;
  double term = 1.0;
  for (std::int32_t k = 1; k <= seriesTerms; ++k) {
    term *= x / 2.0 / static_cast<double>(k);
    sum += term * term;
  }
  return sum;
}

}  // namespace tesh::bramel::vst
