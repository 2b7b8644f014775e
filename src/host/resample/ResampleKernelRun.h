// The resampler's dot products and the loop around them, as templates over the registers of an instruction set. Each
// kernel's source file includes it and compiles it for its own instruction set, so everything here has internal
// linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {
namespace {

/// Half of a register of 256 bits, or the register of 128 bits itself.
template <typename R>
struct HalfOf {
  using Registers = R;
};
template <typename R>
requires requires { typename R::Half; }
struct HalfOf<R> {
  using Registers = typename R::Half;
};

/// The dot products of output frames, in registers that hold a group of taps as a whole or in two parts. `Groups` is
/// the number of groups if it is known at compile time, else 0. What moves the position is inlined, so that the
/// position stays in registers.
template <typename R, std::size_t Groups>
class Dots {
  using Floats = typename R::Floats;
  using Four = typename HalfOf<R>::Registers;
  using FourFloats = typename Four::Floats;
  static constexpr std::size_t kLanes = R::kBytes / sizeof(float);
  static constexpr std::size_t kParts = 8 / kLanes;

 public:
  /// Computes the next frame, which lies a / 2^14 past a phase: it is (1 - a) times the phase's sum plus a times the
  /// next one's.
  [[gnu::always_inline]] static void makeOne(const ResampleRun& run, ResamplePosition& at, std::size_t made) {
    const FourFloats units = Four::floatsOf(Four::all32(unitsOf(at)));
    const FourFloats weights = Four::fourFloats(1.0F, 1.0F, 0.0F, 0.0F) +
                               Four::fourFloats(-kPhaseScale, -kPhaseScale, kPhaseScale, kPhaseScale) * units;
    const FourFloats parts = nextSums(run, at) * weights;
    const FourFloats frame = parts + Four::highHalves(parts, parts);
    run.outLeft[made] = Four::firstFloat(frame);
    run.outRight[made] = Four::secondFloat(frame);
  }

  /// The next four frames, which are weighted side by side.
  [[gnu::always_inline]] static void makeFour(const ResampleRun& run, ResamplePosition& at, std::size_t made) {
    alignas(Four::kBytes) std::int32_t units[4];
    FourFloats sums[4];
#pragma GCC unroll 4
    for (std::size_t frame = 0; frame < 4; ++frame) {
      units[frame] = unitsOf(at);
      asm("" : "+m"(units[frame]));  // Without it the compiler joins two in a register before it stores them.
      sums[frame] = nextSums(run, at);
    }
    const FourFloats ofNext = Four::floatsOf(Four::loadAligned(units)) * Four::allFloats(kPhaseScale);
    const FourFloats ofPhase = Four::allFloats(1.0F) - ofNext;
    const FourFloats phaseA = Four::zipLow32(sums[0], sums[1]);
    const FourFloats phaseB = Four::zipLow32(sums[2], sums[3]);
    const FourFloats nextA = Four::zipHigh32(sums[0], sums[1]);
    const FourFloats nextB = Four::zipHigh32(sums[2], sums[3]);
    Four::storeFloats(run.outLeft + made,
                      Four::lowHalves(phaseA, phaseB) * ofPhase + Four::lowHalves(nextA, nextB) * ofNext);
    Four::storeFloats(run.outRight + made,
                      Four::highHalves(phaseA, phaseB) * ofPhase + Four::highHalves(nextA, nextB) * ofNext);
  }

 private:
  static std::int32_t unitsOf(const ResamplePosition& at) { return static_cast<std::int32_t>(at.within & kPhaseMask); }

  /// The sums of the next frame: left and right of the phase, left and right of the next one. Moves on.
  [[gnu::always_inline]] static FourFloats nextSums(const ResampleRun& run, ResamplePosition& at) {
    const std::size_t groups = Groups != 0 ? Groups : run.groups;
    const TapGroup* tables = run.tables + (at.within >> kPhaseFractionBits) * groups;
    const float* window = run.window + 2 * at.input;
    asm("" : "+r"(tables), "+r"(window));  // Without it the compiler computes an address for each group.
    Floats phase[kParts]{};
    Floats next[kParts]{};
    for (std::size_t i = 0; i < groups; ++i) {
      add<0>(tables[i], window + 8 * i, phase, next);
      if constexpr (kParts == 2) {
        add<1>(tables[i], window + 8 * i, phase, next);
      }
    }
    at.advance(run.step);
    // Of the lower and upper half of each 128 bits: left and right of the phase, left and right of the next one. Not a
    // function of its own: a compiler for Windows warns of one that returns 256 bits.
    const Floats sums = R::lowHalves(phase[0], next[0]) + R::highHalves(phase[0], next[0]);
    if constexpr (kParts == 2) {
      return sums + (R::lowHalves(phase[1], next[1]) + R::highHalves(phase[1], next[1]));
    } else {
      return R::upper(sums) + R::lower(sums);
    }
  }

  /// Adds a part of a group. A template, because a part that is a variable costs an address for each group.
  template <std::size_t kPart>
  static void add(const TapGroup& taps, const float* window, Floats* phase, Floats* next) {
    constexpr std::size_t kLane = kPart * kLanes;
    const Floats frames = R::loadFloats(window + kLane);
    phase[kPart] = phase[kPart] + frames * R::loadAlignedFloats(taps.phase.data() + kLane);
    next[kPart] = next[kPart] + frames * R::loadAlignedFloats(taps.next.data() + kLane);
  }
};

template <typename R, std::size_t Groups>
std::size_t runWith(const ResampleRun& givenRun, ResamplePosition& position) {
  const ResampleRun run = givenRun;
  ResamplePosition at = position;
  std::size_t made = 0;
  // As long as the last of four frames surely lies within the run.
  const std::size_t furthest = 3 * (std::size_t{run.step.inputs} + 1);
  for (; at.input + furthest < run.frames; made += 4) {
    Dots<R, Groups>::makeFour(run, at, made);
  }
  for (; at.input < run.frames; ++made) {
    Dots<R, Groups>::makeOne(run, at, made);
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
