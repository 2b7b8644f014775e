// The factory waves have the properties of their categories. All are rendered once; in a sanitizer build, every 27th.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include <map>

#include "WaveMeter.h"
#include "content/waves/FactoryWaves.h"
#include "content/waves/Leveller.h"
#include "support/Sanitized.h"

namespace {

using namespace sivray::content;
using support::correlation;
using support::courseOf;
using support::lengthOf;
using support::Spectrum;

constexpr std::size_t kStride = support::kIsSanitized ? 27 : 1;

const std::vector<Wave>& allWaves() {
  static const std::vector<Wave> waves = [] {
    if (kStride == 1) {
      return makeFactoryWaves(SIVRAY_WAVE_TABLES);
    }
    std::vector<Wave> some;
    const std::vector<FactoryRow> rows = readFactoryRows(SIVRAY_WAVE_TABLES);
    for (std::size_t i = 0; i < rows.size(); i += kStride) {
      some.push_back(makeWave(rows[i]));
    }
    return some;
  }();
  return waves;
}

std::vector<Wave> wavesOf(std::string_view category) {
  std::vector<Wave> waves;
  for (const Wave& wave : allWaves()) {
    if (kCategoryNames[static_cast<std::size_t>(wave.category)] == category) {
      waves.push_back(wave);
    }
  }
  return waves;
}

Sound soundOf(const Wave& wave) {
  Sound sound;
  for (const auto* side : {&wave.left, &wave.right}) {
    if (!side->empty()) {
      Signal& signal = sound.emplace_back();
      std::transform(side->begin(), side->end(), std::back_inserter(signal), [](auto x) { return x / 32768.0; });
    }
  }
  return sound;
}

double mean(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

/// Songs store a wave as its number divided by the highest number, so neither the numbers nor their count may change.
TEST(FactoryWaves, KeepTheirNumbers) {
  const std::vector<FactoryRow> rows = readFactoryRows(SIVRAY_WAVE_TABLES);
  ASSERT_EQ(rows.size(), 512U);
  std::uint64_t hash = 14695981039346656037U;
  for (const FactoryRow& row : rows) {
    for (const char letter : row.row.name + "\n") {
      hash = (hash ^ static_cast<std::uint8_t>(letter)) * 1099511628211U;
    }
  }
  EXPECT_EQ(hash, 0x4f4385686bd66504U) << "a wave that songs know has another number";
}

TEST(FactoryWaves, FillTenCategories) {
  std::map<int, int> counts;
  for (const FactoryRow& row : readFactoryRows(SIVRAY_WAVE_TABLES)) {
    ++counts[row.category];
  }
  EXPECT_EQ(counts.size(), kCategoryNames.size());
  for (const auto& [category, count] : counts) {
    EXPECT_GE(count, 20) << category;
  }
  if (kStride == 1) {
    std::size_t bytes = 0;
    for (const Wave& wave : allWaves()) {
      bytes += 2 * (wave.left.size() + wave.right.size());
    }
    EXPECT_LT(bytes, std::size_t{64} << 20U);
  }
}

TEST(FactoryWaves, BeginAndEndAtZeroAndNeverClip) {
  for (const Wave& wave : allWaves()) {
    SCOPED_TRACE(wave.name);
    EXPECT_LE(wave.left.size(), 264598U);
    EXPECT_TRUE(wave.right.empty() || wave.right.size() == wave.left.size());
    int highest = 0;
    for (const auto* side : {&wave.left, &wave.right}) {
      if (side->empty()) {
        continue;
      }
      EXPECT_EQ(side->front(), 0);
      EXPECT_EQ(side->back(), 0);
      for (std::size_t i = 1; i <= 8; ++i) {
        EXPECT_LT(std::abs((*side)[side->size() - i]), 100) << i;
      }
      const double constant = std::accumulate(side->begin(), side->end(), 0.0) / static_cast<double>(side->size());
      EXPECT_LT(std::abs(constant), 1.0);
      const auto [low, high] = std::minmax_element(side->begin(), side->end());
      highest = std::max({highest, static_cast<int>(*high), -static_cast<int>(*low)});
    }
    EXPECT_GE(highest, 5800);   // -15 dB
    EXPECT_LE(highest, 29205);  // -1 dB
  }
}

TEST(FactoryWaves, SoundEquallyLoudWithinACategory) {
  for (const std::string_view category : kCategoryNames) {
    std::vector<double> louds;
    for (const Wave& wave : wavesOf(category)) {
      louds.push_back(loudnessOf(soundOf(wave)));
    }
    ASSERT_FALSE(louds.empty());
    std::sort(louds.begin(), louds.end());
    const double middle = louds[louds.size() / 2];
    EXPECT_LT(louds.back() - middle, 2.0) << category;
    EXPECT_GT(louds[louds.size() / 10] - middle, -5.5) << category;
    EXPECT_GT(louds.front() - middle, category == "FX" ? -10.0 : -7.5) << category;
  }
}

TEST(FactoryWaves, KeepTheirLevelWhenBothSidesAreAdded) {
  for (const Wave& wave : allWaves()) {
    if (!wave.right.empty()) {
      const double alike = correlation(wave.left, wave.right);
      EXPECT_GT(alike, -0.3) << wave.name;
      EXPECT_LT(alike, 0.9999) << wave.name;
    }
  }
}

TEST(FactoryWaves, HaveTheSpectraOfTheirDrums) {
  struct Law {
    std::string_view category;
    double low, high;
    double least, most;
  };
  const Law laws[]{{"Kick", 20, 80, -6, 0},         {"Kick", 1000, 20000, -60, -6},   {"Kick", 0, 18, -90, -20},
                   {"Snare", 2000, 20000, -20, 0},  {"Snare", 0, 80, -90, -16},       {"Clap", 500, 8000, -21, 0},
                   {"Close HH", 0, 200, -120, -16}, {"Close HH", 3000, 22000, -3, 0}, {"Open HH", 0, 200, -120, -18},
                   {"Open HH", 3000, 22000, -5, 0}, {"Tom", 50, 1000, -1.5, 0},       {"Tom", 0, 40, -90, -12}};
  for (const Wave& wave : allWaves()) {
    const std::string_view category = kCategoryNames[static_cast<std::size_t>(wave.category)];
    if (category == "Cymbal" || category == "Perc" || category == "FX" || category == "Hit") {
      continue;
    }
    const Spectrum spectrum(wave.left);
    for (const Law& law : laws) {
      if (law.category == category) {
        const double share = spectrum.share(law.low, law.high);
        EXPECT_GE(share, law.least) << wave.name << ' ' << law.low << " to " << law.high;
        EXPECT_LE(share, law.most) << wave.name << ' ' << law.low << " to " << law.high;
      }
    }
  }
}

TEST(FactoryWaves, LastAsLongAsTheirDrums) {
  const auto lengths = [](std::string_view category) {
    std::vector<double> seconds;
    for (const Wave& wave : wavesOf(category)) {
      seconds.push_back(lengthOf(wave.left));
    }
    return seconds;
  };
  const std::vector<double> closed = lengths("Close HH");
  const std::vector<double> open = lengths("Open HH");
  EXPECT_LT(*std::max_element(closed.begin(), closed.end()), 0.2);
  EXPECT_GT(*std::min_element(open.begin(), open.end()), 0.12);
  EXPECT_GT(mean(open), 4.0 * mean(closed));
  EXPECT_GT(mean(lengths("Cymbal")), 0.7);
}

TEST(FactoryWaves, KicksAndTomsFallInPitch) {
  if (kStride != 1) {
    return;  // 10 % of all may not fall, but 10 % of so few waves would be none.
  }
  const auto crossings = [](const std::vector<std::int16_t>& samples, std::size_t first, std::size_t last) {
    int count = 0;
    for (std::size_t i = first + 1; i < std::min(last, samples.size()); ++i) {
      count += (samples[i - 1] < 0) != (samples[i] < 0) ? 1 : 0;
    }
    return count;
  };
  for (const std::string_view category : {"Kick", "Tom"}) {
    std::size_t falling = 0;
    const std::vector<Wave> waves = wavesOf(category);
    for (const Wave& wave : waves) {
      falling += crossings(wave.left, 0, 2646) > crossings(wave.left, 2646, 5292) ? 1U : 0U;
    }
    EXPECT_GE(falling + 1 + waves.size() / 10, waves.size()) << category;
  }
}

TEST(FactoryWaves, SetsOfTomsGoDown) {
  std::map<std::string, double> last;
  for (const Wave& wave : wavesOf("Tom")) {
    const std::string set = wave.name.substr(0, wave.name.find_last_not_of("1234") + 1);
    const double hertz = Spectrum(wave.left).strongestHertz();
    if (last.contains(set) && set != wave.name) {
      EXPECT_LT(hertz, 0.9 * last[set]) << wave.name;
    }
    last[set] = hertz;
  }
}

TEST(FactoryWaves, ClapsOfOneHandAreSeveralBursts) {
  const FactoryRow row{2, parseWaveTable("Claps | clap | bursts=0:12:24:36", "here").front()};
  const std::vector<double> course = courseOf(makeWave(row).left, 0.002);
  int bursts = 0;
  for (std::size_t i = 1; i + 1 < 24; ++i) {
    bursts += course[i] > 1.3 * course[i - 1] && course[i] > 3000.0 ? 1 : 0;
  }
  EXPECT_GE(bursts, 3);
}

TEST(FactoryWaves, TailsOfCymbalsDoNotBuzz) {
  for (const Wave& wave : wavesOf("Cymbal")) {
    if (wave.name == "Finger Cym" || wave.name == "Gong" || wave.left.size() < 40000) {
      continue;
    }
    const std::vector<std::int16_t> tail(wave.left.begin() + 13000, wave.left.begin() + 21000);
    double most = 0.0;
    for (std::ptrdiff_t lag = 88; lag < 1760; ++lag) {
      most = std::max(most, correlation({tail.begin() + lag, tail.end()}, tail));
    }
    EXPECT_LT(most, 0.75) << wave.name;
  }
}

TEST(FactoryWaves, NoTwoAreAlike) {
  std::vector<std::vector<double>> prints;
  for (const Wave& wave : allWaves()) {
    prints.push_back(support::fingerprintOf(wave.left));
  }
  for (std::size_t a = 0; a < prints.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      EXPECT_GT(support::distance(prints[a], prints[b]), 0.8) << allWaves()[a].name << ", " << allWaves()[b].name;
    }
  }
}

TEST(FactoryWaves, HangOnNothingButTheirRow) {
  const std::vector<FactoryRow> rows = readFactoryRows(SIVRAY_WAVE_TABLES);
  for (const std::size_t index : {0U, 54U, 81U, 108U, 270U}) {
    const Wave again = makeWave(rows[index]);
    EXPECT_EQ(again.name, allWaves()[index / kStride].name);
    EXPECT_EQ(again.left, allWaves()[index / kStride].left);
    EXPECT_EQ(again.right, allWaves()[index / kStride].right);
  }
}

}  // namespace
