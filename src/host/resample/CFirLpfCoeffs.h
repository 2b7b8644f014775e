// A windowed-sinc low-pass.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/CKaiserWindowCoeffs.h"

namespace tesh::bramel::vst {

/// The filter's coefficients at one sample rate.
class CFirLpfCoeffs : public CKaiserWindowCoeffs {
 public:
  CFirLpfCoeffs();

  double value(std::int32_t i) const override;

  /// In Hz; the cut-off stays where it is.
  virtual void setSampleRate(std::int32_t newRate);

  /// The filter's delay in whole samples of its rate.
  virtual std::int32_t latency() const { return length / 2; }

  void setCutoff(std::int32_t hertz);
  void setGain(double decibels);

 private:
  void updateCutoff();

  double normalisedCutoff = 0.0;  ///< 2 cutoff / rate.
  double angularCutoff = 0.0;     ///< 2 pi cutoff / rate.
  std::int32_t rate = 64 * 44100;
  std::int32_t cutoff = 158000;
  double gain = 1.0;  ///< Linear.
};

}  // namespace tesh::bramel::vst
