// The power spectrum of a stretch of sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

namespace sivray {

/// A transform of 2 to the power of `order` samples. Reusable, but not thread-safe.
class Spectrum {
 public:
  enum class Window {
    none,  ///< Leaves the samples as they are.
    hann,  ///< Rises and falls again.
    fall,  ///< The falling half of a Hann window: full weight at the start, for sounds with an immediate onset.
  };

  Spectrum(int order, Window window);

  /// Returns the power of each bin from 0 Hz to half the rate, valid until the next call: the squared magnitude of the
  /// transform's sum. A sine of amplitude a reaches (a / 2 times the sum of the window) squared. Missing samples count
  /// as zero; surplus ones are ignored.
  std::span<const float> of(std::span<const float> samples);

  std::size_t size() const { return weights.size(); }

 private:
  std::vector<float> weights;
  std::vector<std::complex<float>> turns;  ///< exp(-2 pi i k / size), for k below size / 2.
  std::vector<std::complex<float>> sums;
  std::vector<float> powers;
};

}  // namespace sivray
