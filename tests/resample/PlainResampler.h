// The resampler as a plain loop, one sample at a time and without rest.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "host/resample/COversamplingFilterCoeffs.h"

namespace scene {

/// One channel.
class PlainResampler {
 public:
  PlainResampler(std::int32_t length, std::int32_t fromRate, float toRate, std::int32_t cutoffHz, std::int32_t phases)
      : phasesQ14(static_cast<std::uint32_t>(phases) << 14),
        taps(static_cast<std::size_t>(((length - 1 + phases) / phases + 3) & ~3)) {
    tesh::bramel::vst::COversamplingFilterCoeffs filter;
    filter.setAttenuation(85.0);
    filter.setSampleRate(fromRate);
    filter.setOversampling(phases);
    filter.setLength(length);
    filter.setCutoff(cutoffHz);
    for (std::int32_t phase = 0; phase <= phases; ++phase) {
      std::vector<float>& table = tables.emplace_back();
      for (std::size_t k = 0; k < taps; ++k) {
        table.push_back(static_cast<float>(filter.value(phase + static_cast<std::int32_t>(k) * phases)));
      }
    }
    const double step = static_cast<double>(fromRate) * phases * 16384.0 / static_cast<double>(toRate);
    stepInteger = static_cast<std::uint32_t>(step);
    stepFraction = static_cast<float>(step - stepInteger);
  }

  std::vector<float> process(const float* input, std::size_t frames) {
    std::vector<float> output;
    const std::uint64_t end = frames * phasesQ14;
    std::uint64_t consumed = 0;
    const auto consume = [&] {
      history[++writeIndex & 1023] = *input++;
      consumed += phasesQ14;
    };
    while (position < end) {
      while (consumed <= position) {
        consume();
      }
      const std::uint64_t within = phasesQ14 - consumed + position;
      const float alpha = static_cast<float>(within & 16383) / 16384.0F;
      const float below = (1.0F - alpha) * dot(tables[within >> 14]);
      const float above = alpha * dot(tables[(within >> 14) + 1]);
      output.push_back(below + above);
      fraction += stepFraction;
      position += stepInteger;
      if (fraction >= 1.0F) {
        fraction -= 1.0F;
        ++position;
      }
    }
    while (consumed < end) {
      consume();
    }
    position -= consumed;
    return output;
  }

 private:
  /// In four lanes, oldest tap first.
  float dot(const std::vector<float>& table) const {
    std::array<float, 4> lanes{};
    for (std::size_t i = 0; i < taps; ++i) {
      const std::size_t k = taps - 1 - i;
      const float product = table[k] * history[(writeIndex - k) & 1023];
      lanes[i % 4] += product;
    }
    const float low = lanes[0] + lanes[1];
    const float high = lanes[2] + lanes[3];
    return low + high;
  }

  std::uint64_t phasesQ14;
  std::size_t taps;
  std::vector<std::vector<float>> tables;
  std::uint32_t stepInteger;
  float stepFraction;
  std::array<float, 1024> history{};
  std::uint64_t writeIndex = 0;
  std::uint64_t position = 0;
  float fraction = 0.0F;
};

}  // namespace scene
