// The transform of spectrograms and measurements: levels and positions of sines, and sounds shorter than the window.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <vector>

#include "sheet/Spectrum.h"

namespace sivray {
namespace {

constexpr int kOrder = 10;
constexpr std::size_t kSize = 1 << kOrder;

TEST(Spectrum, ShowsEachSineAtItsBinWithItsAmplitude) {
  std::vector<float> sound(kSize + 5, 1.0F);  // Samples beyond the window are ignored.
  for (std::size_t i = 0; i < kSize; ++i) {
    const double turn = 2.0 * std::numbers::pi * static_cast<double>(i) / double{kSize};
    sound[i] = static_cast<float>(0.5 * std::sin(37.0 * turn) + 0.25 * std::cos(400.0 * turn));
  }
  Spectrum spectrum(kOrder, Spectrum::Window::hann);
  const std::span<const float> powers = spectrum.of(sound);
  ASSERT_EQ(powers.size(), kSize / 2 + 1);
  for (std::size_t bin = 0; bin < powers.size(); ++bin) {
    // A Hann window spreads a sine over three bins, with half its height on each side.
    const double first = 0.5 * std::max(0.0, 1.0 - std::abs(static_cast<double>(bin) - 37.0) / 2.0);
    const double second = 0.25 * std::max(0.0, 1.0 - std::abs(static_cast<double>(bin) - 400.0) / 2.0);
    ASSERT_NEAR(std::sqrt(powers[bin]) * 4.0 / double{kSize}, first + second, 1e-5) << bin;
  }
}

TEST(Spectrum, TakesMissingSamplesAsSilence) {
  Spectrum spectrum(kOrder, Spectrum::Window::none);
  spectrum.of(std::vector<float>(kSize, 1.0F));
  for (const float power : spectrum.of(std::vector<float>{0.5F})) {
    ASSERT_NEAR(power, 0.25F, 1e-6F);
  }
}

}  // namespace
}  // namespace sivray
