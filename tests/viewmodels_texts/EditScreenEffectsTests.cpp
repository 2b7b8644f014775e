// The effect selector's steps: each leads to its own effect type.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/texts/EditScreenEffects.h"

#include <gtest/gtest.h>

#include <set>

namespace tesh::bramel {
namespace {

TEST(EditScreenEffects, EveryStepLeadsToItsOwnTypeAndTheEndReadsInvalid) {
  std::set<int> types;
  for (std::size_t step = 0; step < kEditScreenEffectCount; ++step) {
    types.insert(editScreenTypeId(step));
  }
  EXPECT_EQ(types.size(), kEditScreenEffectCount);
  for (const int without : {1, 2, 18, 19}) {
    EXPECT_FALSE(types.contains(without));
  }
  EXPECT_STREQ(editScreenName(26), "invalid");
  EXPECT_STREQ(editScreenLabel(26, 0), "invalid");
  EXPECT_STREQ(editScreenLabel(3, 2), "invalid");
  EXPECT_STREQ(editScreenLabel(8, 0), "TUBE GAIN");
  EXPECT_STREQ(editScreenLabel(8, 1), "");
}

}  // namespace
}  // namespace tesh::bramel
