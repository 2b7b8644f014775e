// Measurements: figures of synthetic hits with known values, distances, groups, and recordings read from a folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>

#include "FallingSounds.h"
#include "content/measure/References.h"
#include "content/measure/Similar.h"
#include "content/measure/Targets.h"
#include "engine/samples/SivraySampleLibrary.h"
#include "support/Scratch.h"

namespace sivray::content {
namespace {

double figureOf(const Figures& figures, Figure figure) { return figures[static_cast<std::size_t>(figure)]; }

Hit sum(const Hit& a, const Hit& b, float gain) {
  Hit both(a);
  for (std::size_t i = 0; i < both.size(); ++i) {
    both[i] += gain * b[i];
  }
  return both;
}

Wave waveOf(const Hit& hit, int rate, double gain) {
  Wave wave{"Wave", 0, rate, {}, {}};
  for (const float sample : hit) {
    wave.left.push_back(static_cast<std::int16_t>(std::lround(static_cast<double>(sample) * gain * 32000.0)));
  }
  return wave;
}

TEST(Measure, KnowsTheDecayAndThePlaceOfASine) {
  FigureMeter meter;
  const Figures figures = meter.figuresOf(fallingSine(1000.0, 0.6));
  EXPECT_NEAR(figureOf(figures, Figure::fall20), 200.0, 5.0);
  EXPECT_NEAR(figureOf(figures, Figure::fall60), 600.0, 5.0);
  EXPECT_NEAR(figureOf(figures, Figure::midFall20), 200.0, 5.0);
  EXPECT_NEAR(figureOf(figures, Figure::toneFall60), 600.0, 30.0);
  EXPECT_NEAR(figureOf(figures, Figure::tail), -32.4, 0.2);  // The level falls from -25 to -50 dB in this time.
  EXPECT_NEAR(figureOf(figures, Figure::peakHertz), 1000.0, 6.0);
  EXPECT_NEAR(figureOf(figures, Figure::centroid), 1000.0, 60.0);
  EXPECT_GT(figureOf(figures, Figure::energyMid), -0.1);
  EXPECT_LT(figureOf(figures, Figure::energyBright), -25.0);
  EXPECT_EQ(figureOf(figures, Figure::peaks), 1.0);
}

TEST(Measure, FindsTheSecondModeAndTheHeightOfPeaks) {
  FigureMeter meter;
  const Figures two = meter.figuresOf(sum(fallingSine(400.0, 1.0), fallingSine(800.0, 1.0), 0.1F));
  EXPECT_NEAR(figureOf(two, Figure::secondMode), -20.0, 1.0);
  EXPECT_EQ(figureOf(two, Figure::peaks), 2.0);
  const Figures bare = meter.figuresOf(fallingNoise(1.0, 1));
  const Figures ringing = meter.figuresOf(sum(fallingNoise(1.0, 1), fallingSine(5000.0, 1.0), 0.5F));
  EXPECT_NEAR(figureOf(bare, Figure::ringingHigh), 10.0, 2.0);
  EXPECT_GT(figureOf(ringing, Figure::ringingHigh), 20.0);
  EXPECT_LT(figureOf(ringing, Figure::ringing), 13.0);
}

TEST(Measure, TimesAnAttackAndCountsEchoes) {
  Hit ramp(22050, 1.0F);
  for (std::size_t i = 0; i < 882; ++i) {
    ramp[i] = static_cast<float>(i) / 882.0F;
  }
  Hit echoes = fallingNoise(0.02, 3);
  for (const std::size_t at : {441U, 882U}) {
    echoes = sum(
        echoes,
        [&] {
          Hit late(at, 0.0F);
          const Hit again = fallingNoise(0.02, static_cast<unsigned>(at));
          late.insert(late.end(), again.begin(), again.end());
          return late;
        }(),
        0.7F);
  }
  FigureMeter meter;
  EXPECT_NEAR(figureOf(meter.figuresOf(ramp), Figure::attack), 16.0, 0.5);  // 10 to 90 % of 20 ms.
  EXPECT_EQ(figureOf(meter.figuresOf(echoes), Figure::echoes), 2.0);
  EXPECT_EQ(meter.figuresOf({}), Figures{});
}

TEST(Measure, DistanceIgnoresLevelDelayAndRate) {
  PictureMaker maker;
  const Hit tone = fallingSine(1000.0, 0.3);
  const auto pictureOf = [&](const Wave& wave) { return maker.pictureOf(hitOf(wave)); };
  const Picture loud = pictureOf(waveOf(tone, 44100, 1.0));
  EXPECT_EQ(distance(loud, loud), 0.0F);
  EXPECT_NEAR(distance(loud, pictureOf(waveOf(tone, 44100, 0.1))), 0.0F, 0.1F);
  Hit late(5000, 0.0F);
  late.insert(late.end(), tone.begin(), tone.end());
  EXPECT_NEAR(distance(loud, pictureOf(waveOf(late, 44100, 1.0))), 0.0F, 0.1F);
  EXPECT_LT(distance(loud, pictureOf(waveOf(fallingSine(1000.0, 0.3, 2.0, 48000.0), 48000, 1.0))), 2.0F);
  EXPECT_TRUE(hitOf(waveOf(Hit(100), 44100, 1.0)).empty());
}

TEST(Measure, DistanceGrowsWithTheDifference) {
  PictureMaker maker;
  const Picture one = maker.pictureOf(fallingNoise(1.0, 1));
  const float again = distance(one, maker.pictureOf(fallingNoise(1.0, 2)));
  const float shorter = distance(one, maker.pictureOf(fallingNoise(0.5, 2)));
  const float other = distance(one, maker.pictureOf(fallingSine(200.0, 1.0)));
  EXPECT_LT(again, 3.5F);
  EXPECT_GT(shorter, 2.0F * again);
  EXPECT_GT(other, 2.0F * shorter);
  EXPECT_EQ(other, distance(maker.pictureOf(fallingSine(200.0, 1.0)), one));
}

TEST(SimilarWaves, AreTheNearestByDistanceWithTheFarthestOfTheCategory) {
  std::vector<Wave> waves;
  for (const double hertz : {60.0, 62.0, 64.0, 66.0, 68.0, 70.0, 72.0, 74.0, 76.0, 78.0, 300.0}) {
    waves.push_back(waveOf(fallingSine(hertz, 0.5), 44100, 0.5));
  }
  waves.push_back(waveOf(fallingNoise(0.5, 1), 44100, 0.5));
  waves.push_back(waveOf(fallingNoise(0.5, 2), 44100, 0.25));
  waves[11].category = waves[12].category = 1;
  std::vector<NumberedWave> numbered;
  for (const Wave& wave : waves) {
    numbered.push_back({static_cast<std::int32_t>(8 * numbered.size()), &wave, {}});
  }
  const auto kins = similarWaves(numbered);
  ASSERT_EQ(kins.size(), waves.size());
  for (std::size_t i = 0; i < kins.size(); ++i) {
    EXPECT_EQ(kins[i].wave, numbered[i].number);
    EXPECT_EQ(kins[i].nearest.size(), 8U);
  }
  EXPECT_EQ(kins[0].nearest[0], 8 * 1);
  EXPECT_EQ(kins[0].farthest, 8 * 10) << "of its category";
  EXPECT_EQ(kins[11].nearest[0], 8 * 12) << "whatever the level";
  EXPECT_EQ(kins[11].farthest, 8 * 12) << "the only other one";
  EXPECT_NEAR(static_cast<double>(kins[11].loudness - kins[12].loudness), 6.0, 0.5);
  EXPECT_TRUE(similarWaves(std::span(numbered).first(1))[0].nearest.empty());
  EXPECT_EQ(similarWaves(std::span(numbered).first(1))[0].farthest, -1);
}

TEST(SimilarWaves, AreKnownOfAllWavesOfTheInstalledLibrary) {
  tesh::vimo::SivraySampleLibrary library;
  ASSERT_TRUE(library.load(SIVRAY_CONTENT_FOLDER "/Tesh/Bramel/Resource/SivrayPCM/drumparam_category.bin"));
  for (std::int32_t place = 0; place < library.waveCount(); ++place) {
    const auto* const kin = library.similarWaves().of(library.waveId(place));
    ASSERT_NE(kin, nullptr) << "build the target 'content' of the release preset first";
    EXPECT_EQ(kin->nearest.size(), 8U);
    EXPECT_EQ(library.waveCategory(library.flatIndexOf(kin->farthest)), library.waveCategory(place));
    EXPECT_GT(kin->loudness, -60.0F);
    EXPECT_LT(kin->loudness, 0.0F);
  }
}

TEST(Measure, NamesTellGroups) {
  constexpr int kSnare = 1, kOpen = 4, kCymbal = 6, kPerc = 7, kFx = 8;
  const auto acoustic = [](int category, const char* name) { return groupOf(category, name, SoundSource::acoustic); };
  EXPECT_EQ(acoustic(kSnare, "Maple Snare"), Group::snare);
  EXPECT_EQ(groupOf(kSnare, "Club Snare", SoundSource::machine), Group::machineSnare);
  EXPECT_EQ(acoustic(kCymbal, "Crash Large"), Group::crash);
  EXPECT_EQ(acoustic(kCymbal, "Ride Tip"), Group::ride);
  EXPECT_EQ(acoustic(kPerc, "Rim Click"), Group::stick);
  EXPECT_EQ(acoustic(kPerc, "Wood Blk Low"), Group::woodBlock);
  EXPECT_EQ(acoustic(kPerc, "Cowbell"), Group::cowbell);
  EXPECT_EQ(groupOf(kPerc, "Cowbell", SoundSource::machine), std::nullopt);
  for (const auto& [category, name] : {std::pair{kSnare, "Snare Roll"},
                                       {kOpen, "Hat Semi-Open"},
                                       {kCymbal, "Ride Bell"},
                                       {kCymbal, "Crash/Ride"},
                                       {kPerc, "Tamborim"},
                                       {kFx, "Kick"}}) {
    EXPECT_EQ(acoustic(category, name), std::nullopt) << name;
  }
}

TEST(Measure, RangesAreInOrder) {
  for (const Targets& targets : kTargets) {
    for (const Range& range : targets) {
      EXPECT_LE(range.quarter, range.middle);
      EXPECT_LE(range.middle, range.threeQuarters);
      EXPECT_LT(range.lowest, range.highest);
    }
  }
  Figures figures{};
  for (std::size_t i = 0; i < kFigures; ++i) {
    figures[i] = kTargets[static_cast<std::size_t>(Group::tom)][i].middle;
  }
  EXPECT_EQ(countOutside(figures, Group::tom), 0U);
  figures[0] = 1.0e6;
  figures[7] = 1.0e6;
  EXPECT_EQ(countOutside(figures, Group::tom), 2U);
}

void writeWav(const support::Scratch& scratch, const std::string& name, const Hit& hit) {
  const juce::File file(scratch.path(name));
  file.getParentDirectory().createDirectory();
  std::unique_ptr<juce::AudioFormatWriter> writer(juce::WavAudioFormat().createWriterFor(
      file.createOutputStream().release(), kMeasureRate, 1, 24, juce::StringPairArray(), 0));
  const float* channel = hit.data();
  writer->writeFromFloatArrays(&channel, 1, static_cast<int>(hit.size()));
}

TEST(Measure, ReadsTheHardHitsOfDrumSets) {
  const support::Scratch scratch;
  const support::Scratch more;
  const Hit kick = fallingSine(60.0, 0.4);
  writeWav(scratch, "A/soft.wav", fallingSine(50.0, 0.2));
  writeWav(scratch, "A/hard.wav", kick);
  writeWav(scratch, "A/bell.wav", fallingSine(900.0, 1.0));
  scratch.write("A/drumkit.xml",
                "<drumkit_info><instrumentList><instrument><name>Kick</name>"
                "<layer><filename>soft.wav</filename><max>0.5</max></layer>"
                "<layer><filename>hard.wav</filename><max>1</max></layer></instrument>"
                "<instrument><name>Ride Bell</name><filename>bell.wav</filename></instrument>"
                "</instrumentList></drumkit_info>");
  writeWav(scratch, "B/Kicks/copy.wav", kick);
  writeWav(scratch, "B/Kicks/own.wav", fallingSine(80.0, 0.3));
  writeWav(scratch, "Electro C/Kick 1.wav", fallingSine(45.0, 0.9));
  std::vector<Reference> references = readReferences(scratch.path());
  writeWav(more, "D/Kick 1.wav", fallingSine(95.0, 0.4));
  writeWav(more, "E/Kick 1.wav", fallingSine(110.0, 0.4));
  writeWav(more, "E/Kick 2.wav", kick);
  addReferences(references, more.path(), Half::judge);
  std::string all;
  for (const Reference& one : references) {
    all += one.set + "/" + one.file + (one.half == Half::tune ? " tune" : " judge") +
           (one.group == Group::kick ? "\n" : " machine\n");
  }
  EXPECT_EQ(all,
            "A/hard.wav tune\nB/own.wav judge\nElectro C/Kick 1.wav tune machine\n"
            "D/Kick 1.wav judge\nE/Kick 1.wav judge\n");
  EXPECT_EQ(referencesOf(references, Group::kick, Half::judge).size(), 3U);
  EXPECT_THROW(readReferences(scratch.path("A")), std::runtime_error);
}

}  // namespace
}  // namespace sivray::content
