// Binds, starts and retires ramps.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/voice/RampBank.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tesh::bramel::plugin::sivray {

namespace {

/// Sign-extends the lower 24 bits, which is the range of a bound field.
std::int32_t extendedFrom24(std::int32_t word) { return cofu::core::wrapShiftLeft(word, 8) >> 8; }

}  // namespace

RampBank::RampBank() {
  std::iota(slotToPosition.begin(), slotToPosition.end(), 0);
  std::iota(positionToSlot.begin(), positionToSlot.end(), 0);
  destinations.fill(&unbound);
}

std::int32_t RampBank::allocate() {
  const std::int32_t slot = std::min(allocated, kCapacity - 1);
  ++allocated;
  return slot;
}

void RampBank::setRate(std::int32_t slot, std::int32_t newRate) { rate(positionOf(slot)) = newRate; }

void RampBank::bind(std::int32_t slot, std::int32_t* field) {
  destination(positionOf(slot)) = field;
  setNow(slot, extendedFrom24(*field));
}

void RampBank::bindKeepingTarget(std::int32_t slot, std::int32_t* field) {
  const std::int32_t position = positionOf(slot);
  destination(position) = field;
  current(position) = *field;
}

void RampBank::setNow(std::int32_t slot, std::int32_t value) {
  const std::int32_t position = positionOf(slot);
  current(position) = value;
  target(position) = value;
  *destination(position) = value;
}

void RampBank::setTarget(std::int32_t slot, std::int32_t value) {
  const std::int32_t position = positionOf(slot);
  const std::int32_t old = std::exchange(target(position), value);
  if (value == old || current(position) != old || position < active) {
    return;
  }
  swapPositions(position, active);
  ++active;
}

void RampBank::swapPositions(std::int32_t a, std::int32_t b) {
  std::swap(rate(a), rate(b));
  std::swap(current(a), current(b));
  std::swap(target(a), target(b));
  std::swap(destination(a), destination(b));
  std::swap(positionToSlot[static_cast<std::size_t>(a)], positionToSlot[static_cast<std::size_t>(b)]);
  slotToPosition[static_cast<std::size_t>(positionToSlot[static_cast<std::size_t>(a)])] = a;
  slotToPosition[static_cast<std::size_t>(positionToSlot[static_cast<std::size_t>(b)])] = b;
}

void RampBank::retireArrived() {
  for (std::int32_t position = 0; position < active;) {
    if (current(position) != target(position)) {
      ++position;
      continue;
    }
    if (position < active - 1) {
      swapPositions(position, active - 1);
    }
    --active;
  }
}

}  // namespace tesh::bramel::plugin::sivray
