// Parameters from a table, at and beyond the ends of the table.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameters/Q57214DrumGenericParameter.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "parameters/ParameterGroupTable.h"

namespace tesh::bramel::plugin::sivray {
namespace {

TEST(GenericParameter, OwnsItsRowsStoresWhatIsGivenAndAnswersForBadIndices) {
  std::string name = "Level";
  const std::array<ParameterRow, 2> table{{{name.c_str(), 0, 127, 100}, {"Pan", -64, 63, 0}}};
  Q57214DrumGenericParameter group(table);
  name = "-----";
  EXPECT_STREQ(group.info(0)->name, "Level");
  EXPECT_EQ(group.indexOf("Pan"), 1);
  EXPECT_EQ(group.indexOf("pan"), -1);
  EXPECT_EQ(group.value(0), 100);
  std::int32_t beyond = 1000;
  EXPECT_EQ(group.setValue(0, &beyond), 1000);
  EXPECT_EQ(group.value(0), 1000);
  for (const int index : {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(group.setValue(index, &beyond), 0);
    EXPECT_EQ(group.value(index), 0);
    EXPECT_STREQ(group.info(index)->name, "----");
  }

  ParameterGroupTable groups;
  groups.set(34, &group);
  EXPECT_EQ(groups.groupOf(parameterId(34, 15)), &group);
  EXPECT_EQ(groups.groupOf(parameterId(33, 15)), nullptr);
  EXPECT_EQ(groups.groupOf(kParameterIds), nullptr);
  EXPECT_EQ(groups.groupOf(~0U), nullptr);
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray
