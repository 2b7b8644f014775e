// The resampler's dot products and the loop around them, as templates over the registers of an instruction set. Each
// kernel's source file includes it and compiles it for its own instruction set, so everything here has internal
// linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {
namespace {

/// Both channels of an output frame.
struct OutputFrame {
  float left;
  float right;
};

/// The dot products of one output frame, in registers that hold a group of taps as a whole or in two parts.
template <typename R>
struct Dots {
  using Floats = typename R::Floats;
  static constexpr std::size_t kLanes = R::kBytes / sizeof(float);
  static constexpr std::size_t kParts = 8 / kLanes;

  /// Computes the frame that lies `units`, below 2^14, past a phase: with a = units / 2^14 it is (1 - a) times the
  /// phase's sum plus a times the next one's. `Groups` is the number of groups if it is known at compile time, else 0.
  template <std::size_t Groups>
  static OutputFrame frame(const TapGroup* tables, const float* window, std::size_t groups, std::int32_t units) {
    Floats phase[kParts]{};
    Floats next[kParts]{};
    for (std::size_t i = 0; i < (Groups != 0 ? Groups : groups); ++i) {
      add<0>(tables[i], window + 8 * i, phase, next);
      if constexpr (kParts == 2) {
        add<1>(tables[i], window + 8 * i, phase, next);
      }
    }
    const Floats sums = pairSums(phase[0], next[0]);
    if constexpr (kParts == 2) {
      return weighted<R>(sums + pairSums(phase[1], next[1]), weightsOf<R>(units));
    } else {
      using Half = typename R::Half;
      // In this order the compiler needs no copy of the sums.
      const typename Half::Floats weights = weightsOf<Half>(units);
      return weighted<Half>(R::upper(sums) + R::lower(sums), weights);
    }
  }

 private:
  /// Adds a part of a group. A template, because a part that is a variable costs an address for each group.
  template <std::size_t kPart>
  static void add(const TapGroup& taps, const float* window, Floats* phase, Floats* next) {
    constexpr std::size_t kLane = kPart * kLanes;
    const Floats frames = R::loadFloats(window + kLane);
    phase[kPart] = phase[kPart] + frames * R::loadAlignedFloats(taps.phase.data() + kLane);
    next[kPart] = next[kPart] + frames * R::loadAlignedFloats(taps.next.data() + kLane);
  }

  /// The sums of the lower and upper half of each 128 bits: left and right of the phase, left and right of the next.
  static Floats pairSums(Floats phase, Floats next) { return R::lowHalves(phase, next) + R::highHalves(phase, next); }

  /// What the sums count for: left and right of the phase, left and right of the next.
  template <typename Four>
  static typename Four::Floats weightsOf(std::int32_t units) {
    return Four::fourFloats(1.0F, 1.0F, 0.0F, 0.0F) +
           Four::fourFloats(-kPhaseScale, -kPhaseScale, kPhaseScale, kPhaseScale) * Four::floatsOf(Four::all32(units));
  }

  template <typename Four>
  static OutputFrame weighted(typename Four::Floats sums, typename Four::Floats weights) {
    const typename Four::Floats parts = sums * weights;
    const typename Four::Floats made = parts + Four::highHalves(parts, parts);
    return {Four::firstFloat(made), Four::secondFloat(made)};
  }
};

template <typename R, std::size_t Groups>
std::size_t runWith(const ResampleRun& run, ResamplePosition& position) {
  ResamplePosition at = position;
  const ResampleStep step = run.step;
  const std::size_t groups = Groups != 0 ? Groups : run.groups;
  std::size_t made = 0;
  for (; at.input < run.frames; ++made) {
    const auto units = static_cast<std::int32_t>(at.within & kPhaseMask);
    const TapGroup* const tables = run.tables + (at.within >> kPhaseFractionBits) * groups;
    const OutputFrame frame = Dots<R>::template frame<Groups>(tables, run.window + 2 * at.input, groups, units);
    run.outLeft[made] = frame.left;
    run.outRight[made] = frame.right;
    at.advance(step);
  }
  position = at;
  return made;
}

template <typename R>
std::size_t runResample(const ResampleRun& run, ResamplePosition& position) {
  constexpr std::size_t kCommonGroups = 6;  // 24 taps: the engine's output at any rate, and input up to 48 kHz
  return run.groups == kCommonGroups ? runWith<R, kCommonGroups>(run, position) : runWith<R, 0>(run, position);
}

}  // namespace
}  // namespace tesh::bramel::vst
