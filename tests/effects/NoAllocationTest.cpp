// The audio thread's calls of the master effect allocate nothing.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/CountedMemory.h"

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <gtest/gtest.h>

#include "effects/SivrayMultiEffector.h"
#include "effects/interfaces/EffectScene.h"

namespace tesh::bramel::plugin::sivray::effects {

TEST(MultiEffector, AllocatesNothingWhileItPlaysAndChangesType) {
  SivrayMultiEffector master;
  scene::Dice dice(4);
  scene::Stereo s = dice.input(512);
  StereoBlock block = s.block();
  const int before = support::memoryCalls();
  for (int type = 0; type < kEffectTypeCount; ++type) {
    master.setValue(kEffectType, type);
    master.setValue(kEdit1, type * 4);
    master.setValue(kEffectSwitch, type % 3);
    master.process(block, 512);
    master.transport(3);
    master.setTempo(600 + 50 * type);
    master.process(block, 512);
    master.reset();
  }
  EXPECT_EQ(support::memoryCalls(), before);
}

}  // namespace tesh::bramel::plugin::sivray::effects

#endif
