// A Kaiser window. It tapers a sinc; its shape parameter sets the depth of the filter's stop band.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// Computes the window's values in double precision. Initially it has 48 points and a stop band of 80 dB.
class CKaiserWindowCoeffs {
 public:
  CKaiserWindowCoeffs();
  virtual ~CKaiserWindowCoeffs() = default;

  /// The number of points, at least 1.
  virtual void setLength(std::int32_t n);

  /// The value at point `i` from 0; 0 at and past the length.
  virtual double value(std::int32_t i) const;

  /// The stop band's depth in dB.
  void setAttenuation(double decibels);

  /// The number of terms of the Bessel function's series; 15 give nine correct digits at 85 dB.
  void setSeriesTerms(std::int32_t n);

 protected:
  std::int32_t length = 48;
  double centre = 23.5;

 private:
  double besselI0(double x) const;

  double beta = 0.0;
  double inverseI0 = 1.0;
  double inverseSpan = 0.0;
  std::int32_t seriesTerms = 15;
};

}  // namespace tesh::bramel::vst
