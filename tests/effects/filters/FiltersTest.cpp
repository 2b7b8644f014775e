// The filters in every kind of lanes, their tables, and their gains for steady tones.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <utility>

#include "effects/filters/CombFilter.h"
#include "effects/filters/CutoffTables.h"
#include "effects/filters/EqualizerTables.h"
#include "effects/filters/FormantTables.h"
#include "effects/filters/PeakingEQ.h"
#include "effects/filters/SivrayFxEqualizer.h"
#include "effects/filters/SivrayFxTalkingModulator.h"
#include "effects/filters/SivrayFxTolvanFilter.h"
#include "effects/interfaces/EffectAdapter.h"
#include "effects/interfaces/LaneScene.h"
#include "effects/modulation/PlainModel.h"

namespace {

using namespace scene;
using namespace tesh::bramel::plugin::sivray::effects;

using Lowpass = SivrayFxTolvanFilter<TolvanMode::kLowpass>;
using Highpass = SivrayFxTolvanFilter<TolvanMode::kHighpass>;
using Bandpass = SivrayFxTolvanFilter<TolvanMode::kBandpass>;

TEST(Filters, EveryKindSoundsAsThePlainOne) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    expectKindsToAgree<Lowpass>(seed, 400);
    expectKindsToAgree<Highpass>(seed, 400);
    expectKindsToAgree<Bandpass>(seed, 400);
    expectKindsToAgree<SivrayFxTalkingModulator>(seed, 400);
    expectKindsToAgree<EffectAdapter<CombFilter>>(seed, 200);
    expectKindsToAgree<EffectAdapter<PeakingEQ>>(seed, 400);
  }
}

TEST(Filters, CombSoundsTheSameInLanesAtEveryDelay) {
  Dice dice(8);
  InKind<EffectAdapter<CombFilter>> plain(LaneKind::plain);
  InKind<EffectAdapter<CombFilter>> fast(bestLaneKind());
  Stereo in(3001);
  std::generate(in.left.begin(), in.left.end(), [&] { return static_cast<std::int16_t>(dice.upTo(65535) - 32768); });
  Stereo expected;
  Stereo sound;
  for (int knob = 0; knob < 128; ++knob) {
    for (const auto& [comb, out] : {std::pair{&plain, &expected}, {&fast, &sound}}) {
      comb->setParameter(kEdit1, knob);
      comb->setParameter(kEdit2, 127);
      comb->render(in, *out);
    }
    ASSERT_EQ(sound, expected) << knob;
  }
}

TEST(Filters, TablesHoldTheirEndsAndTheirOrder) {
  for (std::size_t i = 1; i < 128; ++i) {
    EXPECT_LT(cutoffTable[i - 1], cutoffTable[i]);
    EXPECT_LE(lowShelfTable[i - 1].feedforward, lowShelfTable[i].feedforward);
    EXPECT_LE(highShelfTable[i - 1].gain, highShelfTable[i].gain);
  }
  EXPECT_EQ(cutoffTable[127], 2147391259);
  EXPECT_EQ(formant1[0] + formant1[127], 4558 + 1926);
  EXPECT_EQ(formant2[32] + formant2[64], 11171 + 8192);
  EXPECT_EQ(formant3[96] + formant3[127], 16632 + 21100);
  EXPECT_EQ(formant1[1], 4516);  // 4558 - 1331 / 32
}

/// Returns the peak of the last 100 samples for a constant input, or one that alternates in sign.
int steadyLevel(SivrayFx& effect, int edit1, int edit2, int level, bool alternating) {
  effect.setParameter(kEdit1, edit1);
  effect.setParameter(kEdit2, edit2);
  Stereo sound = constantSound(60000, static_cast<std::int16_t>(level));
  for (std::size_t i = 1; alternating && i < sound.left.size(); i += 2) {
    sound.left[i] = sound.right[i] = static_cast<std::int16_t>(-level);
  }
  process(effect, sound);
  EXPECT_EQ(sound.left, sound.right);
  return *std::max_element(sound.left.end() - 100, sound.left.end());
}

TEST(Filters, SteadyTonesComeOutAtTheLevelOfTheirKnobs) {
  SivrayFxEqualizer equalizer;
  EXPECT_NEAR(steadyLevel(equalizer, 64, 64, 10000, false), 9500, 60);
  EXPECT_NEAR(steadyLevel(equalizer, 64, 64, 10000, true), 10600, 60);
  for (const int knob : {63, 65}) {
    EXPECT_EQ(lowShelfTable[static_cast<std::size_t>(knob)].feedback, lowShelfTable[64].feedback);
    EXPECT_EQ(highShelfTable[static_cast<std::size_t>(knob)].gain, highShelfTable[64].gain);
  }
  EffectAdapter<PeakingEQ> peaking;  // a bell leaves both ends of the spectrum alone
  EXPECT_NEAR(steadyLevel(peaking, 60, 127, 10000, false), 10000, 30);
  EXPECT_NEAR(steadyLevel(peaking, 60, 0, 10000, true), 10000, 30);
}

TEST(Filters, CombWithoutFeedbackPassesTheSound) {
  EffectAdapter<CombFilter> comb;
  comb.setParameter(kEdit1, 0);
  comb.setParameter(kEdit2, 0);
  Dice dice(3);
  Stereo sound = dice.input(3000);
  Stereo expected = sound;
  std::replace(expected.left.begin(), expected.left.end(), std::int16_t{-32768}, std::int16_t{-32767});
  process(comb, sound);
  EXPECT_EQ(sound.left, expected.left);
}

}  // namespace
