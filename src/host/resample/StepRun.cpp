// Finds the circle on which a position's fraction moves, and computes many steps on it at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/StepRun.h"

#include <numeric>

namespace tesh::bramel::vst {
namespace {

constexpr std::uint32_t kOne = 1U << 24;  ///< 1.0 in units of 2^-24.

/// number / divisor, rounded up.
constexpr std::uint64_t upTo(std::uint64_t number, std::uint64_t divisor) { return (number + divisor - 1) / divisor; }

}  // namespace

StepRun::StepRun(const ResampleStep& resampleStep) : oneStep(resampleStep) {
  if (!findCycle()) {
    chooseCircle();
  }
  placesPerInput = std::uint64_t{oneStep.unitsPerInput} * places;
  placesPerStep = oneStep.inputs * placesPerInput + std::uint64_t{oneStep.units} * places + stride;
  // Start and step are rounded up, each by less than 2^-kFixedBits of a unit, so after n steps the sum is too large by
  // less than n + 1 of these. It must not reach the next unit: exact positions are at least 1 / kLongestCycle of a unit
  // below it. Only half of the steps that this allows are used.
  constexpr std::uint64_t kMostSteps = (1U << kFixedBits) / kLongestCycle / 2;
  if (places != 0 && spacing == 0 && placesPerInput * kMostFrames <= placesPerStep * kMostSteps) {
    fixedPerStep = upTo(placesPerStep << kFixedBits, places);
  }
}

/// Finds a cycle for steps whose fraction returns to 0 after a few steps, having visited each of its places once.
bool StepRun::findCycle() {
  std::array<float, kLongestCycle> sums{};
  std::uint32_t count = 0;
  ResamplePosition at;
  do {
    sums[count] = at.fraction;
    at.advance({kOne, 0, 0, oneStep.fraction});
    ++count;
  } while (at.fraction != 0.0F && count < kLongestCycle);
  const std::uint32_t carried = at.within;
  if (at.fraction != 0.0F || std::gcd(count, carried) != 1) {
    return false;
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    cycle[i * carried % count] = sums[i];
  }
  places = count;
  stride = carried;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (placeOf(cycle[i]) != i) {
      return false;
    }
  }
  return true;
}

/// A sum in single precision keeps multiples of 2^-23 if it is 1 or more, and of 2^-24 if it is in 1/2 to 1.
///
/// Case 1: the step's fraction is a multiple of 2^-23. No sum is ever rounded, and the fraction moves on a circle of
/// 2^24 places.
///
/// Case 2: the step's fraction is F units of 2^-24, where F is more than 2/3 and one more than a multiple of 4. Let E =
/// 2^24 - F + 1, also a multiple of 4. From a multiple of 4 that is at least E, a step gives an odd sum above 1,
/// halfway between two floats; it is rounded to the even one, the multiple of 4 below, so the step moves back by E.
/// From a lower place X, three steps give X + F and X + 2F - 2^24, both exact, and then a sum halfway between two
/// floats again, now rounded up; the three steps move back by 3E and on by 2^24 + 4. A quarter of the fraction
/// therefore moves back by E / 4 on a circle of 2^22 + 1 places. The two odd fractions in between lie 3 units below
/// their place, which is among the last E / 4 of the circle, and 2 units below it, which is among the E / 4 before
/// those.
void StepRun::chooseCircle() {
  places = 0;
  const float inUnits = oneStep.fraction * static_cast<float>(kOne);
  const auto units = static_cast<std::uint32_t>(inUnits);
  if (static_cast<float>(units) != inUnits) {
    return;
  }
  if (units % 2 == 0) {
    places = kOne;
    stride = units;
    spacing = 1;
  } else if (units % 4 == 1 && units > kOne / 3 * 2 + 1) {
    places = kOne / 4 + 1;
    stride = places - (kOne - units + 1) / 4;
    spacing = 4;
  }
}

std::uint32_t StepRun::placeOf(float fraction) const {
  if (spacing == 0) {
    constexpr float kToNearest = 0.5F;
    return static_cast<std::uint32_t>(fraction * static_cast<float>(places) + kToNearest);
  }
  return (static_cast<std::uint32_t>(fraction * static_cast<float>(kOne)) + spacing - 1) / spacing;
}

float StepRun::fractionAt(std::uint32_t place) const {
  if (spacing == 0) {
    return cycle[place];
  }
  std::uint32_t units = place * spacing;
  if (spacing > 1 && place >= stride) {
    units -= 3;
  } else if (spacing > 1 && place >= stride - (places - stride)) {
    units -= 2;
  }
  return static_cast<float>(units) / static_cast<float>(kOne);
}

/// Places past the position's input frame. One sum then carries from the fraction into the units.
std::uint64_t StepRun::placeWithin(const ResamplePosition& position) const {
  return std::uint64_t{position.within} * places + placeOf(position.fraction);
}

/// Moves the position to `at` places past its input frame.
void StepRun::moveTo(ResamplePosition& position, std::uint64_t at) const {
  const std::uint64_t units = at / places;
  position.fraction = fractionAt(static_cast<std::uint32_t>(at % places));
  position.within = static_cast<std::uint32_t>(units % oneStep.unitsPerInput);
  position.input += units / oneStep.unitsPerInput;
}

std::size_t StepRun::pass(ResamplePosition& position, std::size_t frames) const {
  std::size_t steps = 0;
  if (places == 0) {
    for (; position.input < frames; ++steps) {
      position.advance(oneStep);
    }
  } else if (position.input < frames) {
    const std::uint64_t at = placeWithin(position);
    const std::uint64_t way = (frames - position.input) * placesPerInput - at;
    steps = upTo(way, placesPerStep);
    moveTo(position, at + steps * placesPerStep);
  }
  position.input -= frames;
  return steps;
}

std::uint64_t StepRun::fixedPlace(const ResamplePosition& position) const {
  const std::uint64_t units = std::uint64_t{position.input} * oneStep.unitsPerInput + position.within;
  return (units << kFixedBits) + upTo(std::uint64_t{placeOf(position.fraction)} << kFixedBits, places);
}

ResamplePosition StepRun::later(const ResamplePosition& position, std::size_t steps) const {
  ResamplePosition after = position;
  moveTo(after, placeWithin(position) + steps * placesPerStep);
  return after;
}

}  // namespace tesh::bramel::vst
