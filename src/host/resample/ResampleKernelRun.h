// The resampler's dot products and the loop around them, as templates over the registers of an instruction set. Each
// kernel's source file includes it and compiles it for its own instruction set, so everything here has internal
// linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {
namespace {

// The engine's output at any rate, and input up to 48 kHz: 24 taps and 16 phases.
inline constexpr std::size_t kCommonGroups = 6;
inline constexpr unsigned kCommonPhases = 16;

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

/// Where the next output frame lies, for any design. A position is inlined, so that it stays in registers.
class AnyPlace {
 public:
  AnyPlace(const ResampleStep& resampleStep, const ResamplePosition& position) : step(resampleStep), at(position) {}

  std::size_t input() const { return at.input; }
  std::size_t phase() const { return at.within >> kPhaseFractionBits; }
  /// Units past the phase, below higher bits that mean nothing.
  std::int32_t units() const { return static_cast<std::int32_t>(at.within); }
  /// Whether this frame and the next three surely lie before input frame `end`.
  bool isFourBefore(std::size_t end) const { return at.input + 3 * (std::size_t{step.inputs} + 1) < end; }
  void advance() { at.advance(step); }
  ResamplePosition position() const { return at; }

 private:
  ResampleStep step;
  ResamplePosition at;
};

/// The same with `Phases` phases, a power of two: input frame and phase are bits of one sum.
template <unsigned Phases>
class BinaryPlace {
  static_assert(std::has_single_bit(Phases));

 public:
  static constexpr std::uint32_t kUnitsPerInput = Phases << kPhaseFractionBits;

  BinaryPlace(const ResampleStep& step, const ResamplePosition& position)
      : stepUnits(std::uint64_t{step.inputs} * kUnitsPerInput + step.units),
        stepFraction(step.fraction),
        at(std::uint64_t{position.input} * kUnitsPerInput + position.within),
        fraction(position.fraction) {}

  std::size_t input() const { return at / kUnitsPerInput; }
  std::size_t phase() const { return at >> kPhaseFractionBits & (Phases - 1); }
  std::int32_t units() const { return static_cast<std::int32_t>(static_cast<std::uint32_t>(at)); }
  bool isFourBefore(std::size_t end) const { return at + 3 * (stepUnits + 1) < std::uint64_t{end} * kUnitsPerInput; }
  void advance() {
    at += stepUnits;
    fraction += stepFraction;
    if (fraction >= 1.0F) {
      fraction -= 1.0F;
      ++at;
    }
  }
  ResamplePosition position() const { return {input(), static_cast<std::uint32_t>(at % kUnitsPerInput), fraction}; }

 private:
  std::uint64_t stepUnits;
  float stepFraction;
  std::uint64_t at;
  float fraction;
};

/// The dot products of output frames, in registers that hold a group of taps as a whole or in two parts. `Groups` is
/// the number of groups if it is known at compile time, else 0.
template <typename R, std::size_t Groups, typename Place>
class Dots {
  using Floats = typename R::Floats;
  using Four = typename HalfOf<R>::Registers;
  using FourFloats = typename Four::Floats;
  static constexpr std::size_t kLanes = R::kBytes / sizeof(float);
  static constexpr std::size_t kParts = 8 / kLanes;

 public:
  /// Computes the next frame, which lies a / 2^14 past a phase: it is (1 - a) times the phase's sum plus a times the
  /// next one's.
  [[gnu::always_inline]] static void makeOne(const ResampleRun& run, Place& at, std::size_t made) {
    const FourFloats units = floatsOf(Four::all32(at.units()));
    const FourFloats weights = Four::fourFloats(1.0F, 1.0F, 0.0F, 0.0F) +
                               Four::fourFloats(-kPhaseScale, -kPhaseScale, kPhaseScale, kPhaseScale) * units;
    const FourFloats parts = nextSums(run, at) * weights;
    const FourFloats frame = parts + Four::highHalves(parts, parts);
    run.outLeft[made] = Four::firstFloat(frame);
    run.outRight[made] = Four::secondFloat(frame);
  }

  /// The next four frames, which are weighted side by side.
  [[gnu::always_inline]] static void makeFour(const ResampleRun& run, Place& at, std::size_t made) {
    alignas(Four::kBytes) std::int32_t units[4];
    FourFloats sums[4];
#pragma GCC unroll 4
    for (std::size_t frame = 0; frame < 4; ++frame) {
      units[frame] = at.units();
      asm("" : "+m"(units[frame]));  // Without it the compiler joins two in a register before it stores them.
      sums[frame] = nextSums(run, at);
    }
    const FourFloats ofNext = floatsOf(Four::loadAligned(units)) * Four::allFloats(kPhaseScale);
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
  static FourFloats floatsOf(typename Four::Integers units) {
    return Four::floatsOf(Four::bitAnd(units, Four::all32(kPhaseMask)));
  }

  /// The sums of the next frame: left and right of the phase, left and right of the next one. Moves on.
  [[gnu::always_inline]] static FourFloats nextSums(const ResampleRun& run, Place& at) {
    const std::size_t groups = Groups != 0 ? Groups : run.groups;
    const TapGroup* tables = run.tables + at.phase() * groups;
    const float* window = run.window + 2 * at.input();
    asm("" : "+r"(tables), "+r"(window));  // Without it the compiler computes an address for each group.
    Floats phase[kParts]{};
    Floats next[kParts]{};
    // Of 24 taps some are negative and some are not, so that the whole sum has no sign if it is zero, even where the
    // first products are not added to zero.
    addGroup<Groups == kCommonGroups>(tables[0], window, phase, next);
    for (std::size_t i = 1; i < groups; ++i) {
      addGroup<false>(tables[i], window + 8 * i, phase, next);
    }
    at.advance();
    // Of the lower and upper half of each 128 bits: left and right of the phase, left and right of the next one. Not a
    // function of its own: a compiler for Windows warns of one that returns 256 bits.
    const Floats sums = R::lowHalves(phase[0], next[0]) + R::highHalves(phase[0], next[0]);
    if constexpr (kParts == 2) {
      return sums + (R::lowHalves(phase[1], next[1]) + R::highHalves(phase[1], next[1]));
    } else {
      return R::upper(sums) + R::lower(sums);
    }
  }

  template <bool kFirst>
  [[gnu::always_inline]] static void addGroup(const TapGroup& taps, const float* window, Floats* phase, Floats* next) {
    addPart<kFirst, 0>(taps, window, phase, next);
    if constexpr (kParts == 2) {
      addPart<kFirst, 1>(taps, window, phase, next);
    }
  }

  /// A template, because a part that is a variable costs an address for each group.
  template <bool kFirst, std::size_t kPart>
  [[gnu::always_inline]] static void addPart(const TapGroup& taps, const float* window, Floats* phase, Floats* next) {
    constexpr std::size_t kLane = kPart * kLanes;
    const Floats frames = R::loadFloats(window + kLane);
    const Floats ofPhase = frames * R::loadAlignedFloats(taps.phase.data() + kLane);
    const Floats ofNext = frames * R::loadAlignedFloats(taps.next.data() + kLane);
    phase[kPart] = kFirst ? ofPhase : phase[kPart] + ofPhase;
    next[kPart] = kFirst ? ofNext : next[kPart] + ofNext;
  }
};

template <typename R, std::size_t Groups, typename Place>
std::size_t runWith(const ResampleRun& givenRun, ResamplePosition& position) {
  const ResampleRun run = givenRun;
  Place at(run.step, position);
  std::size_t made = 0;
  for (; at.isFourBefore(run.frames); made += 4) {
    Dots<R, Groups, Place>::makeFour(run, at, made);
  }
  for (; at.input() < run.frames; ++made) {
    Dots<R, Groups, Place>::makeOne(run, at, made);
  }
  position = at.position();
  return made;
}

template <typename R>
std::size_t runResample(const ResampleRun& run, ResamplePosition& position) {
  using CommonPlace = BinaryPlace<kCommonPhases>;
  if (run.groups == kCommonGroups && run.step.unitsPerInput == CommonPlace::kUnitsPerInput) {
    return runWith<R, kCommonGroups, CommonPlace>(run, position);
  }
  return runWith<R, 0, AnyPlace>(run, position);
}

}  // namespace
}  // namespace tesh::bramel::vst
