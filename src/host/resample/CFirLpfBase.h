// What runs a signal through a windowed-sinc filter, whatever it does with its rate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "host/resample/COversamplingFilterCoeffs.h"

namespace tesh::bramel::vst {

class CFirLpfBase {
 public:
  CFirLpfBase() = default;
  virtual ~CFirLpfBase() = default;
  CFirLpfBase(const CFirLpfBase&) = delete;
  CFirLpfBase& operator=(const CFirLpfBase&) = delete;

  /// Coefficients of the prototype per sample of the signal.
  virtual std::int32_t phases() const { return 1; }

  /// Phases per step where a filter moves by whole ones.
  virtual std::int32_t step() const { return 1; }

  /// Forgets the signal; the design stays. Audio thread.
  virtual void reset() SIVRAY_NONBLOCKING = 0;

  /// Filters `frames` frames of every channel and gives the number of frames made. Audio thread.
  virtual std::size_t process(const float* const* inputs, float* const* outputs,
                              std::size_t frames) SIVRAY_NONBLOCKING = 0;

  /// Describes the prototype: its length in coefficients, the signal's rate and the cut-off in Hz, the gain in dB.
  virtual void design(std::int32_t length, std::int32_t rate, std::int32_t cutoffHz, double gainDb);

  /// Of the window; they take force with the next design.
  void setAttenuation(double decibels) { coefficients.setAttenuation(decibels); }
  void setSeriesTerms(std::int32_t n) { coefficients.setSeriesTerms(n); }

 protected:
  COversamplingFilterCoeffs coefficients;
};

}  // namespace tesh::bramel::vst
