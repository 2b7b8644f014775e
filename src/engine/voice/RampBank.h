// Smooths the gains of all voices: a bank of one-pole ramps, stepped once per sample. Only moving ramps cost time; they
// are kept at the front of the arrays, in groups of four.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/FixedPoint.h"
#include "core/RealTime.h"

namespace tesh::bramel::plugin::sivray {

/// Values are integers, with 32767 for 1.0. A slot keeps its index, while its position in the arrays changes. Used on
/// the audio thread, and on the thread that builds the engine before audio runs.
class RampBank {
 public:
  static constexpr std::int32_t kCapacity = 1024;
  static constexpr std::size_t kGroupLanes = 4;

  /// Rates. A step multiplies the distance to the target by
  /// rate
  /// / 32768, rounded so that the ramp reaches the target exactly. From 32767 to 0 these rates take 778 steps (18 ms),
  /// 2397 steps (54 ms) and 3 steps.
  static constexpr std::int32_t kMoveRate = -32511;     ///< For a setting that changes.
  static constexpr std::int32_t kEndFadeRate = -32703;  ///< For the fade after a wave's end.
  static constexpr std::int32_t kGateRate = -256;       ///< For opening and closing a voice's send to a bus.

  /// Four ramps side by side: position p is lane p % 4 of group p / 4.
  struct alignas(16) Group {
    std::array<std::int32_t, kGroupLanes> rate;
    std::array<std::int32_t, kGroupLanes> current;
    std::array<std::int32_t, kGroupLanes> target;
  };

  RampBank();
  RampBank(const RampBank&) = delete;
  RampBank& operator=(const RampBank&) = delete;

  /// Returns the next free slot; once all are taken, always the last one.
  std::int32_t allocate();

  /// Sets a slot's rate, -32768 to 0. A slot with rate 0 jumps to its target in one step.
  void setRate(std::int32_t slot, std::int32_t rate) SIVRAY_NONBLOCKING;

  /// Sets the destination and stops the ramp at the field's value (its lower 24 bits).
  void bind(std::int32_t slot, std::int32_t* field) SIVRAY_NONBLOCKING;

  /// Sets the destination and moves from its value to the slot's current target.
  void bindKeepingTarget(std::int32_t slot, std::int32_t* field) SIVRAY_NONBLOCKING;

  /// Jumps: current value, target and destination become `value`. A moving slot is retired by the next tick.
  void setNow(std::int32_t slot, std::int32_t value) SIVRAY_NONBLOCKING;

  /// Starts to move from the current value to `value`. Does nothing if `value` is already the target.
  void setTarget(std::int32_t slot, std::int32_t value) SIVRAY_NONBLOCKING;

  /// Advances by one sample: steps the moving ramps, writes them to their destinations, and retires those that have
  /// arrived.
  void tick() SIVRAY_NONBLOCKING { stepAndRetire<ScalarStep>(); }

  /// `tick` with the caller's function for a group: `Step::step(Group&)` moves four ramps and returns a bit for each
  /// that has arrived. Returns whether a ramp was retired.
  template <typename Step>
  bool stepAndRetire() SIVRAY_NONBLOCKING;

  std::int32_t activeCount() const { return active; }

  /// The slot of a moving ramp; `position` is 0 to activeCount() - 1.
  std::int32_t movingSlot(std::int32_t position) const { return positionToSlot[static_cast<std::size_t>(position)]; }

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
