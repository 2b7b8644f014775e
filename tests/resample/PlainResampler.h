// The resampler as a plain loop over samples, with a filter computed here from formulas, and a converter made of two
// such resamplers.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <deque>
#include <numbers>
#include <vector>

namespace scene {

/// A low-pass of 384 taps at `phases` times the signal's rate: cut-off 22000 Hz, Kaiser window for 85 dB of stop-band
/// attenuation. Its gain is `phases`, because each output sample uses one phase only.
class Prototype {
 public:
  static constexpr int kLength = 384;

  Prototype(std::int32_t rate, std::int32_t phases)
      : gain(phases), cutoff(2.0 * 22000.0 / (static_cast<double>(phases) * rate)) {}

  float operator[](int i) const {
    const double d = i - (kLength - 1) / 2.0;
    const double r = 2.0 * d / (kLength - 1);
    const double angle = std::numbers::pi * cutoff * d;
    const double window = besselI0(kBeta * std::sqrt(1.0 - r * r)) / besselI0(kBeta);
    return i < kLength ? static_cast<float>(std::sin(angle) / angle * cutoff * window * gain) : 0.0F;
  }

 private:
  static constexpr double kBeta = 0.1102 * (85.0 - 8.7);

  /// Returns the Bessel function I0 by fifteen terms of its series.
  static double besselI0(double x) {
    double sum = 1.0;
    for (int k = 1; k <= 15; ++k) {
      sum += std::pow(std::pow(x / 2.0, k) / std::tgamma(k + 1.0), 2.0);
    }
    return sum;
  }

  double gain;
  double cutoff;  ///< Relative to half the oversampled rate.
};

/// One channel.
class PlainResampler {
 public:
  PlainResampler(std::int32_t fromRate, float toRate, std::int32_t phases)
      : phasesQ14(static_cast<std::uint32_t>(phases) << 14), taps(Prototype::kLength / static_cast<unsigned>(phases)) {
    const Prototype prototype(fromRate, phases);
    for (int phase = 0; phase <= phases; ++phase) {
      std::vector<float>& table = tables.emplace_back();
      for (int k = 0; k < static_cast<int>(taps); ++k) {
        table.push_back(prototype[phase + k * phases]);
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
  /// Adds in four lanes, oldest tap first, as the kernels do.
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

/// One channel of the converter, around an engine that passes its input through.
class PlainConverter {
 public:
  PlainConverter(std::int32_t rate, std::int32_t downPhases)
      : down(rate, 44100.0F, downPhases), up(44100, static_cast<float>(rate), 16) {}

  /// Starts both filters from silence; keeps the samples that wait for the host.
  void setRate(std::int32_t rate, std::int32_t downPhases) {
    down = PlainResampler(rate, 44100.0F, downPhases);
    up = PlainResampler(44100, static_cast<float>(rate), 16);
  }

  void clearWaiting() { waiting.assign(kLead, 0.0F); }

  /// Returns a block for the host; `engineFrames` becomes the number of frames at the engine's rate.
  std::vector<float> process(const std::vector<float>& input, std::size_t& engineFrames) {
    const std::vector<float> engine = down.process(input.data(), input.size());
    engineFrames = engine.size();
    for (const float sample : up.process(engine.data(), engine.size())) {
      waiting.push_back(sample);
    }
    const auto end = waiting.begin() + static_cast<std::ptrdiff_t>(input.size());
    const std::vector<float> block(waiting.begin(), end);
    waiting.erase(waiting.begin(), end);
    return block;
  }

 private:
  static constexpr std::size_t kLead = 8;  ///< Frames by which the engine's output is delayed for the host.

  PlainResampler down;
  PlainResampler up;
  std::deque<float> waiting = std::deque<float>(kLead, 0.0F);
};

}  // namespace scene
