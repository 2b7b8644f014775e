// Windows the samples and transforms them through JUCE.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sivray::content {
namespace {

float weightAt(double place, Spectrum::Window window) {
  switch (window) {
    case Spectrum::Window::hann:
      return static_cast<float>(0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * place));
    case Spectrum::Window::fall:
      return static_cast<float>(0.5 + 0.5 * std::cos(std::numbers::pi * place));
    case Spectrum::Window::none:
      break;
  }
  return 1.0F;
}

}  // namespace

Spectrum::Spectrum(int order, Window window)
    : fft(order), weights(std::size_t{1} << static_cast<unsigned>(order)), bins(2 * weights.size()) {
  for (std::size_t i = 0; i < weights.size(); ++i) {
    weights[i] = weightAt(static_cast<double>(i) / static_cast<double>(weights.size()), window);
  }
}

std::span<const float> Spectrum::of(std::span<const float> samples) {
  const std::size_t count = std::min(samples.size(), weights.size());
  std::transform(samples.begin(), samples.begin() + static_cast<std::ptrdiff_t>(count), weights.begin(), bins.begin(),
                 [](float sample, float weight) { return sample * weight; });
  std::fill(bins.begin() + static_cast<std::ptrdiff_t>(count), bins.end(), 0.0F);
  fft.performRealOnlyForwardTransform(bins.data(), true);
  const std::size_t half = weights.size() / 2 + 1;
  for (std::size_t i = 0; i < half; ++i) {
    bins[i] = bins[2 * i] * bins[2 * i] + bins[2 * i + 1] * bins[2 * i + 1];
  }
  return {bins.data(), half};
}

}  // namespace sivray::content
