// A low-pass at a multiple of the signal's rate. Every n-th coefficient belongs to one phase, which filters the signal.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/EngineRate.h"
#include "host/resample/CFirLpfCoeffs.h"

namespace tesh::bramel::vst {

/// The coefficients are multiplied by the oversampling, so that each phase has a gain of 1.
class COversamplingFilterCoeffs : public CFirLpfCoeffs {
 public:
  double value(std::int32_t i) const override { return CFirLpfCoeffs::value(i) * oversampling; }

  /// The signal's rate in Hz.
  void setSampleRate(std::int32_t newRate) override;

  /// The filter's delay in samples of the signal, rounded down.
  std::int32_t latency() const override { return CFirLpfCoeffs::latency() / static_cast<std::int32_t>(oversampling); }

  /// The filter's rate divided by the signal's rate, at least 1.
  void setOversampling(std::int32_t times);

 private:
  double oversampling = 1.0;
  std::int32_t baseRate = static_cast<std::int32_t>(cofu::core::kEngineRate);
};

}  // namespace tesh::bramel::vst
