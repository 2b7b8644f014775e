// The peak and RMS of a whole rendering.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace sivray::render {

class LevelMeter {
 public:
  void add(const float* left, const float* right, int frames);

  std::int64_t frames() const { return frameCount; }

  /// Returns the largest absolute sample in dB of full scale; -inf for silence.
  double peakDecibels() const { return 20.0 * std::log10(static_cast<double>(peak)); }

  /// Returns the RMS over both channels in dB of full scale; -inf for silence.
  double rmsDecibels() const {
    const double samples = 2.0 * static_cast<double>(std::max<std::int64_t>(frameCount, 1));
    return 10.0 * std::log10(energy / samples);
  }

 private:
  float peak = 0.0F;
  double energy = 0.0;
  std::int64_t frameCount = 0;
};

}  // namespace sivray::render
