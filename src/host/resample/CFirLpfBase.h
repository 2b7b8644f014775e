// The base of the classes that filter a signal with a windowed sinc.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "host/resample/COversamplingFilterCoeffs.h"

namespace tesh::bramel::vst {

/// Owns the coefficients and the design parameters. Derived classes add the tables and the signal's history.
class CFirLpfBase {
 public:
  CFirLpfBase() = default;
  virtual ~CFirLpfBase() = default;
  CFirLpfBase(const CFirLpfBase&) = delete;
  CFirLpfBase& operator=(const CFirLpfBase&) = delete;

  /// The oversampling: the filter's rate divided by the signal's rate.
  virtual std::int32_t phases() const { return 1; }

  /// Phases between two output samples, for a filter that moves by whole phases.
  virtual std::int32_t step() const { return 1; }

  /// Clears the signal's history; the design stays. Audio thread.
  virtual void reset() SIVRAY_NONBLOCKING = 0;

  /// Filters `frames` frames of every channel and returns the number of output frames. Audio thread.
  virtual std::size_t process(const float* const* inputs, float* const* outputs,
                              std::size_t frames) SIVRAY_NONBLOCKING = 0;

  /// Designs the filter: `length` coefficients, the signal's rate and the cut-off in Hz, the gain in dB.
  virtual void design(std::int32_t length, std::int32_t rate, std::int32_t cutoffHz, double gainDb);

  /// Depth of the stop band in dB. Takes effect with the next design.
  void setAttenuation(double decibels) { coefficients.setAttenuation(decibels); }
  /// Number of terms of the window's series, see CKaiserWindowCoeffs. Takes effect with the next design too.
  void setSeriesTerms(std::int32_t n) { coefficients.setSeriesTerms(n); }

 protected:
  COversamplingFilterCoeffs coefficients;
};

}  // namespace tesh::bramel::vst
