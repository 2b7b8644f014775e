// Moves a resampler's position by many steps at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "host/resample/ResamplePosition.h"

namespace tesh::bramel::vst {

/// A position's fraction is a sum in single precision that is rounded at each step. Its values nevertheless follow each
/// other like the places that a fixed step visits on a circle. Where that circle is known (it is at all common rates),
/// a few integer operations give exactly the position after any number of single steps.
class StepRun {
 public:
  StepRun() = default;
  explicit StepRun(const ResampleStep& resampleStep);

  /// Moves the position past `frames` input frames, at most 2^14, and counts its input frame from there. Returns the
  /// number of output frames: that many calls of `advance` would give the same position. The position must have come
  /// from a fraction of 0 by such steps.
  std::size_t pass(ResamplePosition& position, std::size_t frames) const SIVRAY_NONBLOCKING;

  const ResampleStep& step() const { return oneStep; }

  /// The step as an integer, in units of 2^-kFixedBits of a unit. 0 if multiples of it would differ in whole units from
  /// single steps within kMostFrames input frames.
  std::uint64_t fixedStep() const { return fixedPerStep; }
  /// The position as an integer in the same units. Only with a fixed step.
  std::uint64_t fixedPlace(const ResamplePosition& position) const SIVRAY_NONBLOCKING;
  /// The position `steps` output frames later. Only with a fixed step.
  ResamplePosition later(const ResamplePosition& position, std::size_t steps) const SIVRAY_NONBLOCKING;

  static constexpr unsigned kFixedBits = 18;
  static constexpr std::size_t kMostFrames = 512;

 private:
  static constexpr std::uint32_t kLongestCycle = 8;

  bool findCycle();
  void chooseCircle();
  std::uint32_t placeOf(float fraction) const;
  float fractionAt(std::uint32_t place) const;
  std::uint64_t placeWithin(const ResamplePosition& position) const;
  void moveTo(ResamplePosition& position, std::uint64_t at) const;

  ResampleStep oneStep;
  std::uint32_t places = 0;   ///< Number of places on the circle; 0 if it is not known.
  std::uint32_t stride = 0;   ///< Places that a step moves by.
  std::uint32_t spacing = 0;  ///< Distance of neighbouring places, in units of 2^-24. 0: `cycle` holds the fractions.
  std::array<float, kLongestCycle> cycle{};
  std::uint64_t placesPerInput = 0;  ///< From one input frame to the next. A unit has as many places as the circle.
  std::uint64_t placesPerStep = 0;
  std::uint64_t fixedPerStep = 0;
};

}  // namespace tesh::bramel::vst
