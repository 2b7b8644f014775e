// Averages channels, converts rates through libsamplerate, and finds where a hit begins.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/measure/Hit.h"

#include <samplerate.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace sivray::content {
namespace {

std::vector<float> monoOf(const Wave& wave) {
  constexpr float kFullScale = 32768.0F;
  std::vector<float> mono(wave.left.size());
  for (std::size_t i = 0; i < mono.size(); ++i) {
    const float left = wave.left[i];
    mono[i] = (wave.right.empty() ? left : 0.5F * (left + static_cast<float>(wave.right[i]))) / kFullScale;
  }
  return mono;
}

std::vector<float> atMeasureRate(const std::vector<float>& mono, int rate) {
  const double ratio = kMeasureRate / rate;
  std::vector<float> result(static_cast<std::size_t>(std::ceil(static_cast<double>(mono.size()) * ratio)));
  SRC_DATA job{};
  job.data_in = mono.data();
  job.input_frames = static_cast<long>(mono.size());
  job.data_out = result.data();
  job.output_frames = static_cast<long>(result.size());
  job.src_ratio = ratio;
  if (const int error = src_simple(&job, SRC_SINC_FASTEST, 1); error != 0) {
    throw std::runtime_error(std::string("could not be converted: ") + src_strerror(error));
  }
  result.resize(static_cast<std::size_t>(job.output_frames_gen));
  return result;
}

}  // namespace

Hit hitFrom(std::span<const float> mono) {
  constexpr float kOnset = 0.01F;  // 40 dB below the peak.
  float peak = 0.0F;
  for (const float sample : mono) {
    peak = std::max(peak, std::abs(sample));
  }
  if (peak <= 0.0F) {
    return {};
  }
  const auto first = std::ranges::find_if(mono, [=](float x) { return std::abs(x) >= kOnset * peak; });
  return {first, mono.end()};
}

Hit hitOf(const Wave& wave) {
  const std::vector<float> mono = monoOf(wave);
  return hitFrom(wave.sampleRate == static_cast<int>(kMeasureRate) ? mono : atMeasureRate(mono, wave.sampleRate));
}

}  // namespace sivray::content
