// The parameter group of the master effect: ranges, names and display texts, and the list of the edit screen.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/MultiEffectorParam.h"

#include <gtest/gtest.h>

#include <tuple>

#include "effects/EffectTable.h"
#include "effects/SivrayMultiEffector.h"

namespace tesh::bramel::plugin::sivray::effects {

namespace {

TEST(MultiEffectorParam, ClampsWhatItIsGivenAndWritesItBack) {
  SivrayMultiEffector master;
  MultiEffectorParam& group = master.parameter();
  for (const auto& [index, given, taken] : {std::tuple{0, 30, 29},
                                            {0, -1, 0},
                                            {1, 2, 1},
                                            {1, -7, 0},
                                            {2, -1, 0},
                                            {2, 0, 0},
                                            {3, 127, 127},
                                            {3, 128, 127}}) {
    std::int32_t value = given;
    group.setValue(index, &value);
    EXPECT_EQ(value, taken);
    EXPECT_EQ(group.value(index), taken);
  }
  std::int32_t value = 500;
  EXPECT_EQ(group.setValue(4, &value), 0);
  EXPECT_EQ(value, 500);
  EXPECT_EQ(group.value(4), 0);
  EXPECT_EQ(group.count(), 4);
}

TEST(MultiEffectorParam, ShowsTextsThatFollowTheType) {
  SivrayMultiEffector master;
  const MultiEffectorParam& group = master.parameter();
  for (const auto& [type, index, value, text] : {
           std::tuple{0, 0, 21, "Kiln Force"},
           {0, 0, 30, ""},
           {0, 0, -1, ""},
           {0, 1, 0, "Off"},
           {0, 1, 1, "On"},
           {0, 1, 2, ""},
           {8, 2, 0, "1/1"},
           {9, 2, 127, "1/64"},
           {8, 3, 5, "5"},
           {13, 2, 0, "1/64"},
           {13, 2, 75, "1/4"},
           {23, 2, 64, "+0"},
           {23, 2, 63, "-1"},
           {23, 3, 127, "+63"},
           {24, 3, 64, "+0"},
           {24, 2, 64, "64"},
           {24, 3, 0, "-64"},
           {14, 2, 100, "100"},
           {14, 4, 1, ""},
       }) {
    master.setValue(kEffectType, type);
    EXPECT_EQ(group.format(index, value), text) << type << " " << index << " " << value;
  }
}

TEST(MultiEffectorParam, NamesFollowTheTypeAndFallBackWhereItHasNone) {
  SivrayMultiEffector master;
  const MultiEffectorParam& group = master.parameter();
  for (const auto& [type, edit1, edit2] : {std::tuple{0, "Edit1", "Edit2"},
                                           {21, "Tube Gain", "Edit2"},
                                           {29, "Formant", "Offset"},
                                           {-3, "Edit1", "Edit2"}}) {
    master.setValue(kEffectType, type);
    EXPECT_STREQ(group.info(2)->name, edit1);
    EXPECT_STREQ(group.info(3)->name, edit2);
  }
  EXPECT_STREQ(group.info(0)->name, "Effect Type");
  EXPECT_EQ(group.info(0)->maximum, 29);
  EXPECT_STREQ(group.info(9)->name, "----");
  EXPECT_EQ(group.indexOf("Switch"), 1);
  EXPECT_EQ(group.indexOf("Effect Switch"), -1);
}

}  // namespace

}  // namespace tesh::bramel::plugin::sivray::effects
