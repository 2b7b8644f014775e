// The circles on which the fraction of a position moves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/StepRun.h"

#include <numeric>

namespace tesh::bramel::vst {
namespace {

constexpr std::uint32_t kOne = 1U << 24;  ///< 1.0 in units of 2^-24.

/// The quotient, rounded up.
constexpr std::uint64_t upTo(std::uint64_t number, std::uint64_t divisor) { return (number + divisor - 1) / divisor; }

}  // namespace

StepRun::StepRun(const ResampleStep& resampleStep) : oneStep(resampleStep) {
  if (!findCycle()) {
    chooseCircle();
  }
  placesPerInput = std::uint64_t{oneStep.unitsPerInput} * places;
  placesPerStep = oneStep.inputs * placesPerInput + std::uint64_t{oneStep.units} * places + stride;
  // Start and step are rounded up. On a circle of few places the sum reaches the next whole unit no sooner than its
  // exact value, even after as many steps as half of 2^kFixedBits has for each place.
  constexpr std::uint64_t kMostSteps = (1U << kFixedBits) / kLongestCycle / 2;
  if (places != 0 && spacing == 0 && placesPerInput * kMostFrames <= placesPerStep * kMostSteps) {
    fixedPerStep = upTo(placesPerStep << kFixedBits, places);
  }
}

/// Takes the sums themselves where after a few steps the fraction is 0 again, and has come by each place once.
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

/// Single precision keeps a sum of 1 or more to 2^-23, and a smaller one from 1/2 on to 2^-24.
///
/// A step that is a multiple of 2^-23 is therefore never rounded: it goes round a circle of 2^24 places.
///
/// Let a step be F units of 2^-24, where F is one more than a multiple of 4, and more than 2/3. E is 2^24 - F + 1, a
/// multiple of 4 too. From a multiple of 4 that is at least E a step leads to an odd sum above 1, halfway between two
/// floats, and the even one of these is the multiple of 4 below: the step has moved back by E. From a lower place X,
/// three steps lead to X + F, to X + 2F - 2^24, both exact, and to a sum halfway between two floats again, of which the
/// even one is the upper this time: the three have moved back by 3E and on by 2^24 + 4. A quarter of the fraction
/// thus moves back by E / 4 on a circle of 2^22 + 1 places. Of the two odd fractions on the way the first lies 3 units
/// below its place, among the last E / 4 of the circle, and the second 2 units, among the E / 4 before.
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

/// Places past the position's input frame: one sum carries the fraction into the units.
std::uint64_t StepRun::placeWithin(const ResamplePosition& position) const {
  return std::uint64_t{position.within} * places + placeOf(position.fraction);
}

/// Puts the position so many places past its input frame.
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
