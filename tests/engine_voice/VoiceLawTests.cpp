// Single values of the voices' laws: levels, pans, pitches, decays, ramps. Constants come from the sound design.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "engine/voice/AmpEnvelope.h"
#include "engine/voice/RampBank.h"
#include "engine/voice/VoiceTables.h"

namespace tesh::bramel::plugin::sivray {
namespace {

/// Converts a pitch of 0 to 48 and a fine pitch of 0 to 200 to the voices' cents.
constexpr std::int32_t cents(std::int32_t pitch, std::int32_t fine) { return pitch * 100 - 100 + fine; }

TEST(VoiceLaws, LevelsPansAndLowBoostsHaveTheirGains) {
  EXPECT_EQ(voiceTables().velocity[0], 0);
  EXPECT_EQ(voiceTables().velocity[1], 460988);
  EXPECT_EQ(voiceTables().velocity[100], 4504948);
  EXPECT_EQ(voiceTables().velocity[127], 8388607);
  EXPECT_EQ(levelGain(127, 127, false), 32194);
  EXPECT_EQ(levelGain(100, 100, false), 10719);
  EXPECT_EQ(levelGain(127, 127, true), 0);
  EXPECT_EQ(levelGain(127, 128, false), 0);
  EXPECT_EQ(panGain(0), 0);
  EXPECT_EQ(panGain(1), 0);
  EXPECT_EQ(panGain(64), 16384);
  EXPECT_EQ(panGain(127), 32767);
  EXPECT_EQ(lowBoostGain(0), -16384);
  EXPECT_EQ(lowBoostGain(127), 32735);
  EXPECT_LT(lowBoostGain(42), 0);
  EXPECT_GT(lowBoostGain(43), 0);
}

TEST(VoiceLaws, PitchesCoverTwoOctavesAndASemitoneToBothSides) {
  EXPECT_EQ(voiceTables().semitone[0], 0.235969F);
  EXPECT_EQ(voiceTables().semitone[25], 1.0F);
  EXPECT_EQ(voiceTables().semitone[50], 4.237852F);
  EXPECT_EQ(voiceTables().cent[99], 1.058851F);
  EXPECT_EQ(pitchIncrement(cents(24, 100), 1.0F), 65536U);
  EXPECT_EQ(pitchIncrement(cents(24, 100), rateRatio(22050.0F)), 32768U);
  EXPECT_EQ(pitchIncrement(cents(0, 0), 1.0F), 15464U);      // 0.235969 * 65536
  EXPECT_EQ(pitchIncrement(cents(48, 200), 1.0F), 277731U);  // 4.237852 * 65536
}

TEST(VoiceLaws, DecaysScaleWithTheWave) {
  EXPECT_EQ(AmpEnvelope::lengthAtEngineRate(44100, 44100.0F), 44100);
  EXPECT_EQ(AmpEnvelope::lengthAtEngineRate(1000, 22050.0F), 2000);
  EXPECT_EQ(AmpEnvelope::decaySamples(44100, 0), 3);
  EXPECT_EQ(AmpEnvelope::decaySamples(44100, 126), 65119);
  EXPECT_EQ(AmpEnvelope::decaySamples(44100, 127), 66150);  // one and a half times the wave
  EXPECT_EQ(AmpEnvelope::decaySamples(0, 127), 1);
}

TEST(RampBank, LandsOnTheTargetAfterTheStepsOfItsRate) {
  struct Case {
    std::int32_t rate;
    int toZero;
    int belowClosed;
  };
  for (const Case& ramp : {Case{-32511, 778, 625}, Case{-32703, 2397, 2217}, Case{-256, 3, 2}}) {
    RampBank bank;
    std::array<std::int32_t, 2> fields{32767, 5};
    for (std::int32_t& field : fields) {
      const std::int32_t slot = bank.allocate();
      bank.setRate(slot, ramp.rate);
      bank.bind(slot, &field);
    }
    bank.setTarget(0, 0);
    int closed = 0;
    int ticks = 0;
    for (; bank.activeCount() > 0; ++ticks) {
      bank.tick();
      closed += fields[0] >= 181 ? 1 : 0;
    }
    EXPECT_EQ(ticks, ramp.toZero) << ramp.rate;
    EXPECT_EQ(closed + 1, ramp.belowClosed) << ramp.rate;
    EXPECT_EQ(fields[0], 0);
    EXPECT_EQ(fields[1], 5);
  }
}

TEST(RampBank, KeepsItsOrderOfMovingRampsThroughJumpsAndRebinding) {
  RampBank bank;
  std::array<std::int32_t, 6> fields{};
  for (std::int32_t& field : fields) {
    const std::int32_t slot = bank.allocate();
    bank.setRate(slot, -32511);
    bank.bind(slot, &field);
  }
  for (std::int32_t slot = 5; slot >= 0; --slot) {
    bank.setTarget(slot, 1000 * (slot + 1));
    bank.setTarget(slot, 2000 * (slot + 1));  // a second target does not make it move twice
  }
  EXPECT_EQ(bank.activeCount(), 6);
  bank.tick();
  std::int32_t moved = 40;
  bank.bindKeepingTarget(2, &moved);  // continues from the current value
  bank.setNow(4, 77);                 // retired by the next tick
  bank.bind(5, &fields[5]);           // stops at the field's value
  const std::int32_t rested = fields[5];
  bank.tick();
  EXPECT_EQ(bank.activeCount(), 4);
  while (bank.activeCount() > 0) {
    bank.tick();
  }
  EXPECT_EQ(moved, 6000);
  EXPECT_EQ(fields, (std::array<std::int32_t, 6>{2000, 4000, fields[2], 8000, 77, rested}));
  EXPECT_GT(rested, 0);
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
