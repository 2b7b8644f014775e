// The bank of ramps with jumps, new targets and rebinding.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

#include "engine/voice/RampBank.h"

namespace tesh::bramel::plugin::sivray {
namespace {

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
    bank.setTarget(slot, 2000 * (slot + 1));  // A second target does not make it step twice per tick.
  }
  EXPECT_EQ(bank.activeCount(), 6);
  bank.tick();
  std::int32_t moved = 40;
  bank.bindKeepingTarget(2, &moved);  // continues from the current value
  bank.setNow(4, 77);                 // Removed at the next tick.
  bank.bind(5, &fields[5]);           // Stops at the field's current value.
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
