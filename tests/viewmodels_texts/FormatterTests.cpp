// What a value reads as, at the ends, in the middle and outside its range.
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
