// The filters in every kind of lanes, their tables, and their gains for steady tones.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <utility>

#include "effects/filters/CombFilter.h"
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
  InKind<EffectAdapter<CombFilter>> plain(VectorSet::none);
  InKind<EffectAdapter<CombFilter>> fast(VectorSet::avx2);
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
  for (int knob = 1; knob < 128; ++knob) {
    EXPECT_LT(TolvanFilter::settingsOf({knob - 1, 0}).cutoff, TolvanFilter::settingsOf({knob, 0}).cutoff);
    const EqualizerLaw::Settings before = EqualizerLaw::settingsOf({knob - 1, knob - 1});
    const EqualizerLaw::Settings after = EqualizerLaw::settingsOf({knob, knob});
    EXPECT_LE(before.low.now, after.low.now);
    EXPECT_LE(before.high.now, after.high.now);
  }
  EXPECT_EQ(TolvanFilter::settingsOf({0, 0}).cutoff, 8016909);
  EXPECT_EQ(TolvanFilter::settingsOf({127, 0}).cutoff, 2147391259);
  const float step = 3.0517578e-5F;
  const EqualizerLaw::Settings cut{{-15585 * step, 15763 * step, -14964 * step},
                                   {134 * step, 1936 * step, -6120 * step}};
  EXPECT_EQ(EqualizerLaw::settingsOf({0, 0}), cut);
  const EqualizerLaw::Settings boost{{-15553 * step, 17028 * step, -16198 * step},
                                     {-22599 * step, 31361 * step, 569 * step}};
  EXPECT_EQ(EqualizerLaw::settingsOf({127, 127}), boost);
  const auto band = [](int vowel, std::size_t index) {
    return TalkingModulatorLaw::settingsOf({vowel, 127}).band[index];
  };
  const auto scaled = [](int formant) { return formant * 24575 >> 14; };  // 1.5 at the end of the Offset knob
  EXPECT_EQ(band(0, 1), scaled(4558));
  EXPECT_EQ(band(1, 1), scaled(4516));  // 4558 - 1331 / 32
  EXPECT_EQ(band(127, 1), scaled(1926));
  EXPECT_EQ(band(32, 2), scaled(11171));
  EXPECT_EQ(band(96, 3), scaled(16632));
}

/// Returns the peak of the last 100 samples, for a constant input or one that alternates in sign.
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
    EXPECT_EQ(EqualizerLaw::settingsOf({knob, knob}), EqualizerLaw::settingsOf({64, 64}));
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
