// The text of every kind of parameter, and the names that the two edit knobs take from the effect.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace tesh::bramel::tooltip {
namespace {

TEST(TooltipProvider, WritesEachParameterInItsOwnWay) {
  SivrayTooltipProvider provider;
  const auto text = [&provider](std::uint64_t index, float value) {
    provider.setValue(index, value);
    return provider.getParameterText(index);
  };
  EXPECT_EQ(provider.getParameterText(14), "-63");
  EXPECT_EQ(text(14, 1.0F), "+63");
  EXPECT_EQ(text(12 + 4, 0.75F), "+12");
  EXPECT_EQ(text(12 + 5, 0.5F), "A");
  EXPECT_EQ(text(84 + 3, 1.0F), "On");
  EXPECT_EQ(text(84 + 7, 0.2F), "Oneshot");
  EXPECT_EQ(text(84 + 8, 0.5F), "64");
  EXPECT_EQ(text(96, 1.0F), "Gate Reverb");
  EXPECT_EQ(text(500, 1.0F), "127");
}

TEST(TooltipProvider, NamesTheEditKnobsAfterTheEffect) {
  SivrayTooltipProvider provider;
  EXPECT_EQ(provider.getParameterName(97), "----");
  provider.setValue(96, 3.0F / 25.0F);
  EXPECT_EQ(provider.getParameterName(97), "CUTOFF");
  provider.setValue(96, 8.0F / 25.0F);
  EXPECT_EQ(provider.getParameterName(97), "TUBE GAIN");
  EXPECT_EQ(provider.getParameterName(98), "----");
  EXPECT_EQ(provider.getParameterName(96), "");
}

TEST(TooltipProvider, SurvivesEveryIndex) {
  SivrayTooltipProvider provider;
  provider.setValue(~std::uint64_t{0}, 1.0F);
  EXPECT_EQ(provider.getValue(~std::uint64_t{0}), 0.0F);
}

}  // namespace
}  // namespace tesh::bramel::tooltip
