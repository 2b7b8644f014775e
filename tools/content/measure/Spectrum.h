// The power spectrum of a stretch of sound.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_dsp/juce_dsp.h>

#include <cstddef>
#include <span>
#include <vector>

namespace sivray::content {

/// A transform of 2 to the power of `order` samples, to be used again and again by one thread.
class Spectrum {
 public:
  enum class Window {
    none,  ///< Leaves the samples as they are.
    hann,  ///< Rises and falls.
    fall,  ///< The falling half of a Hann window: full weight at the start, for sounds that start at once.
  };

  Spectrum(int order, Window window);

  /// Returns the power of each bin from 0 Hz to half the rate, valid until the next call. Missing samples count as
  /// zero; surplus ones are ignored.
  std::span<const float> of(std::span<const float> samples);

  std::size_t size() const { return weights.size(); }

 private:
  juce::dsp::FFT fft;
  std::vector<float> weights;
  std::vector<float> bins;  ///< The transform works in place and needs twice its size.
};

}  // namespace sivray::content
