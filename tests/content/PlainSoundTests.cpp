// Decoders for systems without libsndfile: the same samples as libsndfile, bit by bit, and no harm from broken files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/pack/PlainSound.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "content/Files.h"
#include "content/RateConverter.h"
#include "content/measure/Loudness.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kFrames = 20000;
constexpr std::int64_t kAll = 1000000;

/// Returns varied samples: silence, a tone, noise at full scale, and two nearly equal sides.
std::vector<int> assortedFrames(int channels) {
  std::mt19937 dice(1);
  std::vector<int> frames;
  for (int i = 0; i < kFrames; ++i) {
    const double tone = std::sin(i * 0.03) * std::exp(-i * 0.0005);
    for (int channel = 0; channel < channels; ++channel) {
      const auto noise = static_cast<std::int32_t>(dice());
      const int quiet = static_cast<int>(tone * 1.0e9) + (noise >> (channel == 0 ? 14 : 20));
      frames.push_back(i < 5000 ? 0 : i < 14000 ? quiet : i < 17000 ? noise : static_cast<int>(0x12340000));
    }
  }
  return frames;
}

class PlainSounds : public testing::Test {
 protected:
  std::string write(int format, int channels, double compression = 0.5) const {
    SF_INFO info{};
    info.samplerate = 44100;
    info.channels = channels;
    info.format = format;
    const std::string path = scratch.path("sound");
    SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
    EXPECT_NE(file, nullptr) << std::hex << format;
    sf_command(file, SFC_SET_COMPRESSION_LEVEL, &compression, sizeof compression);
    const std::vector<int> frames = assortedFrames(channels);
    sf_writef_int(file, frames.data(), kFrames);
    sf_close(file);
    return path;
  }

  static void expectTheSame(const std::string& path, const std::string& what) {
    const auto expected = openSound(path);
    const auto plain = openPlainSound(readFile(path));
    EXPECT_EQ(plain->format().channels, expected->format().channels) << what;
    EXPECT_EQ(plain->format().rate, expected->format().rate) << what;
    EXPECT_EQ(plain->format().frames, expected->format().frames) << what;
    EXPECT_FALSE(plain->format().isCutShort) << what;
    EXPECT_TRUE(plain->read(kAll) == expected->read(kAll)) << what;
  }

  support::Scratch scratch;
};

TEST_F(PlainSounds, OfWaveAndAiffAreReadAsTheyLieThere) {
  constexpr int kLittleAiff = SF_FORMAT_AIFF | SF_FORMAT_PCM_16 | SF_ENDIAN_LITTLE;
  for (const int container : {SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_AIFF}) {
    for (const int kind : {SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_PCM_32, SF_FORMAT_FLOAT, SF_FORMAT_DOUBLE}) {
      for (const int channels : {1, 2, 6}) {
        expectTheSame(write(container | kind, channels), std::to_string(container | kind));
      }
    }
  }
  expectTheSame(write(SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1), "8 bits");
  expectTheSame(write(SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 1), "8 bits with a sign");
  expectTheSame(write(kLittleAiff, 2), "sowt");
  EXPECT_THROW(openPlainSound(readFile(write(SF_FORMAT_WAV | SF_FORMAT_ULAW, 1))), std::runtime_error);
}

TEST_F(PlainSounds, OfFlacAreUnpackedToTheBit) {
  for (const int kind : {SF_FORMAT_PCM_S8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24}) {
    for (const int channels : {1, 2, 5}) {
      for (const double compression : {0.0, 0.5, 1.0}) {
        expectTheSame(write(SF_FORMAT_FLAC | kind, channels, compression),
                      std::to_string(kind) + " at " + std::to_string(compression));
      }
    }
  }
  const Bytes flac = readFile(write(SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1));
  constexpr std::size_t kTagBytes = 140;
  const Bytes head{'I', 'D', '3', 4, 0, 0, 0, 0, 1, 2};
  Bytes tagged(kTagBytes + flac.size());
  std::ranges::copy(head, tagged.begin());
  std::ranges::copy(flac, tagged.begin() + kTagBytes);
  EXPECT_TRUE(openPlainSound(tagged)->read(kAll) == openPlainSound(flac)->read(kAll));
}

TEST_F(PlainSounds, ThatAreCutOrMangledEndEarlyOrAreRefused) {
  std::mt19937 dice(2);
  for (const int format :
       {SF_FORMAT_WAV | SF_FORMAT_PCM_24, SF_FORMAT_AIFF | SF_FORMAT_FLOAT, SF_FORMAT_FLAC | SF_FORMAT_PCM_16}) {
    const Bytes whole = readFile(write(format, 2));
    for (int round = 0; round < 300; ++round) {
      Bytes broken = whole;
      if (round < 100) {
        broken.resize(dice() % whole.size());
      } else {
        for (int change = 0; change < 4; ++change) {
          broken[dice() % (round < 200 ? 80 : whole.size())] = static_cast<std::uint8_t>(dice());
        }
      }
      try {
        const auto source = openPlainSound(broken);
        const auto channels = source->read(1000);
        for (const Channel& channel : channels) {
          ASSERT_LE(channel.size(), 1000U);
          ASSERT_EQ(channel.size(), channels.front().size());
        }
      } catch (const std::runtime_error&) {
      }
    }
  }
  const Bytes wave = readFile(write(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1));
  EXPECT_TRUE(openPlainSound({wave.begin(), wave.begin() + 1000})->format().isCutShort);
  Bytes piped = wave;
  for (const std::size_t size : {4U, 40U}) {  // The size field as left by a program that writes to a pipe.
    std::fill_n(piped.begin() + static_cast<std::ptrdiff_t>(size), 4, std::uint8_t{0});
  }
  EXPECT_TRUE(openPlainSound(piped)->read(kAll) == openPlainSound(wave)->read(kAll));
  EXPECT_THROW(openPlainSound({'n', 'o', 'n', 'e'}), std::runtime_error);
}

TEST(RateConverter, KeepsWhatTheNewRateHoldsAndLeavesTheRestOut) {
  constexpr double kPi = 3.14159265358979;
  const auto sine = [](double hertz, double rate) {
    std::vector<float> sound(static_cast<std::size_t>(rate / 5));
    for (std::size_t i = 0; i < sound.size(); ++i) {
      sound[i] = static_cast<float>(std::sin(2.0 * kPi * hertz * static_cast<double>(i) / rate));
    }
    return sound;
  };
  /// Returns the greatest difference in the middle half, in dB.
  const auto difference = [](const std::vector<float>& a, const std::vector<float>& b) {
    float most = 1.0e-9F;
    for (std::size_t i = a.size() / 4; i < a.size() * 3 / 4; ++i) {
      most = std::max(most, std::abs(a[i] - b[i]));
    }
    return 20.0 * std::log10(static_cast<double>(most));
  };
  for (const auto& [from, to] :
       {std::pair{96000.0, 48000.0}, {88200.0, 44100.0}, {384000.0, 48000.0}, {50000.0, 48000.0}, {22050.0, 44100.0}}) {
    for (const double hertz : {100.0, 1000.0, 8000.0}) {
      const auto converted = atRate(sine(hertz, from), to / from, RateQuality::best);
      ASSERT_EQ(converted.size(), static_cast<std::size_t>(to / 5));
      EXPECT_LT(difference(converted, sine(hertz, to)), -95.0) << from << " " << hertz;
      EXPECT_LT(difference(atRate(sine(hertz, from), to / from, RateQuality::fast), sine(hertz, to)), -60.0);
    }
  }
  const auto tooHigh = atRate(sine(30000.0, 96000.0), 0.5, RateQuality::best);
  EXPECT_LT(difference(tooHigh, std::vector<float>(tooHigh.size())), -95.0);
  EXPECT_EQ(atRate(std::vector<float>{1.0F}, 0.5, RateQuality::best).size(), 1U);
}

/// By BS.1770, a full-scale sine of 997 Hz in one channel has -3.01 LUFS.
TEST(Loudness, OfTheLoudestMomentIsThatOfTheRecommendation) {
  StereoSound sound{std::vector<float>(44100 * 2), std::vector<float>(44100 * 2)};
  for (std::size_t i = 44100; i < 44100 + 17640; ++i) {
    sound.left[i] = static_cast<float>(std::sin(2.0 * 3.14159265358979 * 997.0 * static_cast<double>(i) / 44100.0));
  }
  EXPECT_NEAR(momentaryLoudness(sound), -3.01, 0.02);
  sound.right = sound.left;
  EXPECT_NEAR(momentaryLoudness(sound), 0.0, 0.02);
  EXPECT_EQ(momentaryLoudness({std::vector<float>(20000), std::vector<float>(20000)}), -100.0);
}

}  // namespace
}  // namespace sivray::content
