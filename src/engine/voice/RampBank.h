// The gains of all voices on click-free paths: a shared bank of one-pole ramps, stepped once per sample, of which only
// the moving ones cost anything. Moving ramps lie at the front of the arrays, four to a group. SPDX-License-Identifier:
// GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

/// Values are integers with 32767 for 1.0. A slot is named by its index, which it keeps; the position at which it lies
/// in the arrays changes. Audio thread, and the engine's construction.
class RampBank {
 public:
  static constexpr std::int32_t kCapacity = 1024;
  static constexpr std::size_t kGroupLanes = 4;

  /// Four ramps side by side; the position p lies in group p / 4, lane p % 4.
  struct alignas(16) Group {
    std::array<std::int32_t, kGroupLanes> rate;
    std::array<std::int32_t, kGroupLanes> current;
    std::array<std::int32_t, kGroupLanes> target;
  };

  RampBank();
  RampBank(const RampBank&) = delete;
  RampBank& operator=(const RampBank&) = delete;

  /// The next free slot; 1023 when all are taken.
  std::int32_t allocate();

  /// The rate is negative: -32511 for ordinary moves, nearer to -32768 is slower to finish, -256 lands in three steps.
  void setRate(std::int32_t slot, std::int32_t rate) SIVRAY_NONBLOCKING;

  /// Makes `field` the destination and rests at the field's value (24 bits of it).
  void bind(std::int32_t slot, std::int32_t* field) SIVRAY_NONBLOCKING;

  /// Makes `field` the destination and goes on from its value towards the old target.
  void bindKeepingTarget(std::int32_t slot, std::int32_t* field) SIVRAY_NONBLOCKING;

  /// Jumps: current, target and destination become `value`. A moving slot is retired by the next tick.
  void setNow(std::int32_t slot, std::int32_t value) SIVRAY_NONBLOCKING;

  /// Starts to move from the current value to `value`; without effect when that is the target already.
  void setTarget(std::int32_t slot, std::int32_t value) SIVRAY_NONBLOCKING;

  /// One sample: steps the moving ramps, writes them to their destinations, and retires those that have arrived.
  void tick() SIVRAY_NONBLOCKING { stepAndRetire<ScalarStep>(); }

  /// The same with a group step of the caller's instruction set, `Step::step(Group&)`. Gives true if a ramp has
  /// retired.
  template <typename Step>
  bool stepAndRetire() SIVRAY_NONBLOCKING;

  std::int32_t activeCount() const { return active; }

 private:
  struct ScalarStep {
    static int step(Group& group) {
      int arrived = 0;
      for (std::size_t lane = 0; lane < kGroupLanes; ++lane) {
        const std::int32_t distance = cofu::core::wrapSub(group.current[lane], group.target[lane]);
        const std::int32_t scaled = cofu::core::mul15(group.rate[lane], distance);
        group.current[lane] = cofu::core::wrapAdd(group.target[lane], cofu::core::mul15(-32767, scaled));
        arrived |= group.current[lane] == group.target[lane] ? 1 << lane : 0;
      }
      return arrived;
    }
  };

  static constexpr std::size_t kPositions = kCapacity;

  static std::size_t groupOf(std::int32_t position) { return static_cast<std::size_t>(position) / kGroupLanes; }
  static std::size_t laneOf(std::int32_t position) { return static_cast<std::size_t>(position) % kGroupLanes; }

  std::int32_t positionOf(std::int32_t slot) const { return slotToPosition[static_cast<std::size_t>(slot)]; }
  std::int32_t& current(std::int32_t position) { return groups[groupOf(position)].current[laneOf(position)]; }
  std::int32_t& target(std::int32_t position) { return groups[groupOf(position)].target[laneOf(position)]; }
  std::int32_t& rate(std::int32_t position) { return groups[groupOf(position)].rate[laneOf(position)]; }
  std::int32_t*& destination(std::int32_t position) { return destinations[static_cast<std::size_t>(position)]; }

  void swapPositions(std::int32_t a, std::int32_t b);
  void retireArrived() SIVRAY_NONBLOCKING;

  std::array<std::int32_t, kPositions> slotToPosition;
  std::array<std::int32_t, kPositions> positionToSlot;
  std::array<std::int32_t*, kPositions> destinations;
  std::int32_t active = 0;
  std::int32_t allocated = 0;
  std::int32_t unbound = 0;
  std::array<Group, kPositions / kGroupLanes> groups{};
};

template <typename Step>
[[gnu::always_inline]] inline bool RampBank::stepAndRetire() SIVRAY_NONBLOCKING {
  int arrived = 0;
  for (std::int32_t first = 0; first < active; first += static_cast<std::int32_t>(kGroupLanes)) {
    Group& group = groups[groupOf(first)];
    const std::int32_t moving = std::min(active - first, static_cast<std::int32_t>(kGroupLanes));
    arrived |= Step::step(group) & ((1 << moving) - 1);
    for (std::int32_t lane = 0; lane < moving; ++lane) {
      *destination(first + lane) = group.current[static_cast<std::size_t>(lane)];
    }
  }
  if (arrived != 0) {
    retireArrived();
  }
  return arrived != 0;
}

}  // namespace tesh::bramel::plugin::sivray
