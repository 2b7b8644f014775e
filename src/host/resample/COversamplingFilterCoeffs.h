// A low-pass at a multiple of a signal's rate: the prototype whose every n-th coefficient filters the signal itself.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/CFirLpfCoeffs.h"

namespace tesh::bramel::vst {

/// The prototype, louder by the oversampling so that each of its phases passes the signal at unity.
class COversamplingFilterCoeffs : public CFirLpfCoeffs {
 public:
  double value(std::int32_t i) const override { return CFirLpfCoeffs::value(i) * oversampling; }

  /// The signal's rate in Hz.
  void setSampleRate(std::int32_t newRate) override;

  /// The filter's delay in whole samples of the signal.
  std::int32_t latency() const override { return CFirLpfCoeffs::latency() / static_cast<std::int32_t>(oversampling); }

  void setOversampling(std::int32_t times);

 private:
  double oversampling = 1.0;
  std::int32_t baseRate = 44100;
};

}  // namespace tesh::bramel::vst
