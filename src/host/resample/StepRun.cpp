// The circles on which the fraction of a position moves.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/resample/StepRun.h"

#include <numeric>

namespace tesh::bramel::vst {
namespace {

constexpr std::uint32_t kOne = 1U << 24;  ///< 1.0 in units of 2^-24.

}  // namespace

StepRun::StepRun(const ResampleStep& resampleStep) : step(resampleStep) {
  if (!findCycle()) {
    chooseCircle();
  }
  placesPerInput = std::uint64_t{step.unitsPerInput} * places;
  placesPerStep = step.inputs * placesPerInput + std::uint64_t{step.units} * places + stride;
}

/// Takes the sums themselves where after a few steps the fraction is 0 again, and has come by each place once.
bool StepRun::findCycle() {
  std::array<float, kLongestCycle> sums{};
  std::uint32_t count = 0;
  ResamplePosition at;
  do {
    sums[count] = at.fraction;
    at.advance({kOne, 0, 0, step.fraction});
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
  const float inUnits = step.fraction * static_cast<float>(kOne);
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
    return static_cast<std::uint32_t>(fraction * static_cast<float>(places) + 0.5F);
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

std::size_t StepRun::pass(ResamplePosition& position, std::size_t frames) const {
  std::size_t steps = 0;
  if (places == 0) {
    for (; position.input < frames; ++steps) {
      position.advance(step);
    }
    position.input -= frames;
    return steps;
  }
  // One sum of places carries the fraction into the units.
  std::uint64_t at = std::uint64_t{position.within} * places + placeOf(position.fraction);
  if (position.input < frames) {
    const std::uint64_t way = (frames - position.input) * placesPerInput - at;
    steps = (way + placesPerStep - 1) / placesPerStep;
    at += steps * placesPerStep;
  }
  const std::uint64_t units = at / places;
  position.fraction = fractionAt(static_cast<std::uint32_t>(at % places));
  position.within = static_cast<std::uint32_t>(units % step.unitsPerInput);
  position.input += units / step.unitsPerInput - frames;
  return steps;
}

}  // namespace tesh::bramel::vst
