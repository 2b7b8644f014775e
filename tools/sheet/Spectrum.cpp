// Windows the samples and transforms them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/Spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace sivray {
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

/// Moves each value to the index with its own index's bits reversed.
void reverseBits(std::vector<std::complex<float>>& values) {
  std::size_t reversed = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    std::size_t bit = values.size() / 2;
    for (; (reversed & bit) != 0; bit /= 2) {
      reversed ^= bit;
    }
    reversed |= bit;
    if (i < reversed) {
      std::swap(values[i], values[reversed]);
    }
  }
}

/// Multiplies without the standard library's handling of infinities, which is slow.
std::complex<float> product(std::complex<float> a, std::complex<float> b) {
  return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// The fast Fourier transform of Cooley and Tukey, in place.
void transform(std::vector<std::complex<float>>& values, const std::vector<std::complex<float>>& turns) {
  reverseBits(values);
  for (std::size_t half = 1; half < values.size(); half *= 2) {
    const std::size_t step = turns.size() / half;
    for (std::size_t first = 0; first < values.size(); first += 2 * half) {
      for (std::size_t k = 0; k < half; ++k) {
        const std::complex<float> even = values[first + k];
        const std::complex<float> odd = product(values[first + half + k], turns[k * step]);
        values[first + k] = even + odd;
        values[first + half + k] = even - odd;
      }
    }
  }
}

}  // namespace

Spectrum::Spectrum(int order, Window window)
    : weights(std::size_t{1} << static_cast<unsigned>(order)),
      turns(weights.size() / 2),
      sums(weights.size()),
      powers(weights.size() / 2 + 1) {
  for (std::size_t i = 0; i < weights.size(); ++i) {
    weights[i] = weightAt(static_cast<double>(i) / static_cast<double>(weights.size()), window);
  }
  for (std::size_t k = 0; k < turns.size(); ++k) {
    const double turn = static_cast<double>(k) / static_cast<double>(weights.size());
    turns[k] = std::complex<float>(std::polar(1.0, -2.0 * std::numbers::pi * turn));
  }
}

std::span<const float> Spectrum::of(std::span<const float> samples) {
  const std::size_t count = std::min(samples.size(), weights.size());
  for (std::size_t i = 0; i < sums.size(); ++i) {
    sums[i] = i < count ? samples[i] * weights[i] : 0.0F;
  }
  transform(sums, turns);
  std::transform(sums.begin(), sums.begin() + std::ssize(powers), powers.begin(),
                 [](std::complex<float> sum) { return std::norm(sum); });
  return powers;
}

}  // namespace sivray
