// A windowed-sinc low-pass.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/EngineRate.h"
#include "host/resample/CKaiserWindowCoeffs.h"

namespace tesh::bramel::vst {

/// Computes the coefficients of one filter, in double precision. The initial design (64 times 44100 Hz, cut-off 158000
/// Hz) is a placeholder: every user sets its own values.
class CFirLpfCoeffs : public CKaiserWindowCoeffs {
 public:
  CFirLpfCoeffs();

  /// The coefficient at `i` from 0; 0 at and past the length.
  double value(std::int32_t i) const override;

  /// The rate of the coefficients, in Hz. The cut-off in Hz stays as it is.
  virtual void setSampleRate(std::int32_t newRate);

  /// The filter's delay in samples of its rate, rounded down.
  virtual std::int32_t latency() const { return length / 2; }

  /// The frequency at which the gain has fallen by 6 dB.
  void setCutoff(std::int32_t hertz);
  /// The pass band's gain, in dB.
  void setGain(double decibels);

 private:
  void updateCutoff();

  double normalisedCutoff = 0.0;  ///< 2 cutoff / rate.
  double angularCutoff = 0.0;     ///< 2 pi cutoff / rate.
  std::int32_t rate = 64 * static_cast<std::int32_t>(cofu::core::kEngineRate);
  std::int32_t cutoff = 158000;
  double gain = 1.0;  ///< Linear.
};

}  // namespace tesh::bramel::vst
