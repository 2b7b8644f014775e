// The window against its formula, the resampler's kernels against a plain loop, and the resampler in silence.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <tuple>

#include "PlainResampler.h"
#include "host/resample/CFsCwInterpolation.h"
#include "host/resample/StepRun.h"

namespace tesh::bramel::vst {
namespace {

TEST(KaiserWindow, FollowsTheBesselFunctionAtEveryDepthOfStopBand) {
  struct Case {
    double attenuation;
    double beta;
  };
  for (const auto& [attenuation, beta] : {Case{20.0, 0.0}, Case{40.0, 3.39532}, Case{85.0, 8.40826}}) {
    CKaiserWindowCoeffs window;
    window.setSeriesTerms(30);
    window.setAttenuation(attenuation);
    window.setLength(101);
    for (const int i : {0, 1, 17, 50, 83, 100}) {
      const double r = (i - 50) / 50.0;
      EXPECT_NEAR(window.value(i), std::cyl_bessel_i(0.0, beta * std::sqrt(1.0 - r * r)) / std::cyl_bessel_i(0.0, beta),
                  1e-5)
          << attenuation << " dB at " << i;
    }
    EXPECT_EQ(window.value(101), 0.0);
  }
}

struct Conversion {
  std::int32_t from;
  float to;
  std::int32_t phases;
};

std::ostream& operator<<(std::ostream& out, const Conversion& c) { return out << c.from << " Hz to " << c.to << " Hz"; }

constexpr std::array<Conversion, 13> kConversions{{{44100, 22050.0F, 16},
                                                   {44100, 44100.0F, 16},
                                                   {44100, 48000.0F, 16},
                                                   {44100, 45678.0F, 16},
                                                   {44100, 88200.0F, 16},
                                                   {44100, 192000.0F, 16},
                                                   {44100, 100000000.0F, 16},
                                                   {8000, 44100.0F, 16},
                                                   {48000, 44100.0F, 16},
                                                   {45678, 44100.0F, 16},
                                                   {96000, 44100.0F, 8},
                                                   {192000, 44100.0F, 4},
                                                   {10000000, 44100.0F, 4}}};

TEST(Resampler, GivesTheBitsOfThePlainLoopInBlocksOfAnySizeThroughSoundAndSilence) {
  constexpr std::size_t kChannels = 3;
  for (const ResampleKernel& kernel : resampleKernels()) {
    if (!platform::supports(kernel.needs)) {
      continue;
    }
    for (const Conversion& c : kConversions) {
      std::mt19937 random(7);
      std::uniform_real_distribution<float> noise(-1.0F, 1.0F);
      CFsCwInterpolation resampler(kChannels, kernel);
      resampler.setAttenuation(85.0);
      resampler.configure(384, c.from, c.to, 22000, c.phases, 0.0);
      std::vector<scene::PlainResampler> plain(kChannels, {c.from, c.to, c.phases});

      for (int block = 0; block < 40; ++block) {
        const bool isLong = block % 8 == 7 && c.to < 1e6F;
        const std::size_t frames = isLong ? random() % 3000 : (c.to < 1e6F ? random() % 150 : random() % 3);
        std::array<std::vector<float>, kChannels> in;
        std::array<std::vector<float>, kChannels> out;
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
          in[channel].resize(frames);
          if (block % 10 < 5 && (block % 5 != 4 || channel == 2)) {
            std::generate(in[channel].begin(), in[channel].end(), [&] { return noise(random); });
          }
          out[channel].resize(10 + frames * static_cast<std::size_t>(1.0F + c.to / static_cast<float>(c.from)));
        }
        const std::array<const float*, kChannels> inputs{in[0].data(), in[1].data(), in[2].data()};
        const std::array<float*, kChannels> outputs{out[0].data(), out[1].data(), out[2].data()};
        const bool isKnownSilent = block % 10 >= 5 && block % 2 == 0;
        const std::size_t made = resampler.process(inputs.data(), outputs.data(), frames, isKnownSilent);
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
          const std::vector<float> expected = plain[channel].process(in[channel].data(), frames);
          ASSERT_EQ(made, expected.size()) << kernel.name << ", " << c << ", block " << block;
          ASSERT_EQ(made == 0 ? 0 : std::memcmp(out[channel].data(), expected.data(), made * sizeof(float)), 0)
              << kernel.name << ", " << c << ", block " << block << ", channel " << channel;
        }
      }
    }
  }
}

TEST(StepRun, PassesSilenceAsThatManySteps) {
  // The first five repeat after 2^22 + 1 positions, after 2^24, five, three and one.
  for (const Conversion& c :
       {Conversion{48000, 44100.0F, 16}, Conversion{44100, 64000.0F, 16}, Conversion{44100, 96000.0F, 16},
        Conversion{44100, 37800.0F, 16}, Conversion{44100, 88200.0F, 16}, Conversion{44100, 45678.0F, 16}}) {
    const double exactStep = c.from * (c.phases * 16384.0) / static_cast<double>(c.to);
    ResampleStep step;
    step.unitsPerInput = static_cast<std::uint32_t>(c.phases) << kPhaseFractionBits;
    step.inputs = static_cast<std::uint32_t>(exactStep) / step.unitsPerInput;
    step.units = static_cast<std::uint32_t>(exactStep) % step.unitsPerInput;
    step.fraction = static_cast<float>(exactStep - std::floor(exactStep));
    const StepRun run(step);
    ResamplePosition fast;
    ResamplePosition plain;
    std::mt19937 random(7);
    for (int i = 0; i < 400; ++i) {
      const std::size_t frames = i % 100 == 0 ? 1U << 14U : random() % 70;
      std::size_t steps = 0;
      for (; plain.input < frames; ++steps) {
        plain.advance(step);
      }
      plain.input -= frames;
      ASSERT_EQ(run.pass(fast, frames), steps) << c << ", block " << i;
      ASSERT_EQ(std::tie(fast.input, fast.within, fast.fraction), std::tie(plain.input, plain.within, plain.fraction))
          << c << ", block " << i;
    }
  }
}

}  // namespace
}  // namespace tesh::bramel::vst
