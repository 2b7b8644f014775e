// The texts of every kind of parameter, and the names of the two edit knobs, which depend on the effect.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "viewmodels/texts/SivrayTooltipProvider.h"

namespace tesh::bramel::tooltip {
namespace {

TEST(TooltipProvider, WritesEachParameterInItsOwnWay) {
  SivrayTooltipProvider provider;
  const auto text = [&provider](std::uint64_t index, float value) {
    provider.setValue(index, value);
    return provider.getParameterText(index);
  };
  EXPECT_EQ(provider.getParameterText(14), "-63") << "never set";
  constexpr std::array<std::array<const char*, 3>, 12> kColumn{{{"0", "64", "127"},
                                                                {"0", "64", "127"},
                                                                {"-63", "0", "+63"},
                                                                {"Off", "On", "On"},
                                                                {"-24", "0", "+24"},
                                                                {"Off", "A", "B"},
                                                                {"Off", "On", "On"},
                                                                {"Oneshot", "Gate", "Gate"},
                                                                {"0", "64", "127"},
                                                                {"0", "64", "127"},
                                                                {"Off", "On", "On"},
                                                                {"0", "64", "127"}}};
  for (const std::uint64_t pad : {0U, 7U}) {
    for (std::uint64_t row = 0; row < kColumn.size(); ++row) {
      for (std::size_t half = 0; half < 3; ++half) {
        EXPECT_EQ(text(12 * pad + row, 0.5F * static_cast<float>(half)), kColumn[row][half]) << pad << ", " << row;
      }
    }
  }
  EXPECT_EQ(text(7, 0.49F), "Oneshot");
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
  provider.setValue(96, 8.6F / 25.0F);
  EXPECT_EQ(provider.getParameterName(97), "TUBE GAIN") << "cut to a step, where the effect's name is rounded";
  EXPECT_EQ(provider.getParameterText(96), "Distortion");
  EXPECT_EQ(provider.getParameterName(96), "");
}

TEST(TooltipProvider, SurvivesEveryIndex) {
  SivrayTooltipProvider provider;
  provider.setValue(~std::uint64_t{0}, 1.0F);
  EXPECT_EQ(provider.getValue(~std::uint64_t{0}), 0.0F);
}

}  // namespace
}  // namespace tesh::bramel::tooltip
