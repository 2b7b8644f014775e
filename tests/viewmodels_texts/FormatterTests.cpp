// The texts of values at the ends, in the middle and outside of their range.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "viewmodels/texts/ParameterFormatter.h"
#include "viewmodels/texts/ParameterSteps.h"

namespace tesh::bramel {
namespace {

TEST(ParameterSteps, StayInsideTheirRangeForEveryValue) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float huge = std::numeric_limits<float>::infinity();
  EXPECT_EQ(quantizeValue(nan, 128, 0), 0);
  EXPECT_EQ(quantizeValue(huge, 128, 3), 130);
  EXPECT_EQ(quantizeValue(-huge, 128, 3), 3);
  EXPECT_EQ(quantizeValue(0.5F, 128, 0), 64);
  EXPECT_FLOAT_EQ(normaliseState(64, 128, 0), 64.0F / 127.0F);
  EXPECT_EQ(truncateValue(1.0F, 26, 0), 25);
  EXPECT_EQ(truncateValue(0.5F, 26, 0), 13);
  EXPECT_EQ(normaliseState(0, 1, 0), 0.0F);
}

/// A pad's sample among 512 factory waves, with and without numbers for own sounds between them.
TEST(ParameterSteps, KeepEachFactoryWaveWhereNumbersComeBetween) {
  constexpr std::int32_t kWaves = 512;
  for (const std::int32_t distance : {1, 2, 3, 4, 5, 7, 8}) {
    const std::int32_t numbers = (kWaves - 1) * distance + 1;
    for (std::int32_t wave = 0; wave < kWaves; ++wave) {
      const float value = normaliseState(wave, kWaves, 0);
      ASSERT_EQ(quantizeValue(value, numbers, 0), wave * distance) << distance;
      ASSERT_EQ(normaliseState(wave * distance, numbers, 0), value) << "and its number gives the same value back";
    }
    for (std::int32_t number = 0; number < numbers; ++number) {
      ASSERT_EQ(quantizeValue(normaliseState(number, numbers, 0), numbers, 0), number) << distance;
    }
  }
}

TEST(ParameterSteps, OfAnUnboundControlRoundAQuarterEarlier) {
  EXPECT_EQ(NormalParameterQuantizer().valueToState(0.1F, 4), 1);
  EXPECT_EQ(CParameterQuantizer().valueToState(0.1F, 4), 0);
  EXPECT_EQ(NormalParameterQuantizer().valueToState(0.7F, 1), 0);
}

TEST(ParameterFormatters, PrintSignedRangesWithASignAndOthersWithout) {
  const IntegerParameterFormatter pan(-63, 63, 1);
  EXPECT_EQ(pan.format(0.0F), "-63");
  EXPECT_EQ(pan.format(0.5F), "0");
  EXPECT_EQ(pan.format(1.0F), "+63");
  EXPECT_EQ(IntegerParameterFormatter(0, 127, 1).format(0.0F), "0");
  EXPECT_EQ(BinaryParameterFormatter("Off", "On").format(0.5F), "On");
}

}  // namespace
}  // namespace tesh::bramel
