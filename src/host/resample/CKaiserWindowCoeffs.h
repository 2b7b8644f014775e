// A Kaiser window: the taper that decides how deep a windowed-sinc filter's stop band is.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tesh::bramel::vst {

/// Coefficients over `length` points, in double precision.
class CKaiserWindowCoeffs {
 public:
  CKaiserWindowCoeffs();
  virtual ~CKaiserWindowCoeffs() = default;

  virtual void setLength(std::int32_t n);

  /// The coefficient at `i` from 0; 0 at and past the length.
  virtual double value(std::int32_t i) const;

  /// The stop band's depth in dB.
  void setAttenuation(double decibels);

  /// How far the series of the Bessel function is summed.
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
