// The resampler's dot products and the loop around them, as templates over the registers of an instruction set. Each
// kernel's source file includes it and compiles it for its own instruction set, so everything here has internal
// linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "host/resample/ResampleKernel.h"

namespace tesh::bramel::vst {
namespace {

// The design of the output at any rate, and of the input up to 48 kHz: 24 taps in 16 phases.
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

/// The position of the next output frame, for any design. Held in local variables, so that it stays in registers.
class AnyPlace {
 public:
  /// Whether a step adds the same to `bits` each time.
  static constexpr bool kIsLinear = false;

  AnyPlace(const StepRun& steps, const ResamplePosition& position) : step(steps.step()), at(position) {}

  std::size_t input() const { return at.input; }
  std::size_t phase() const { return at.within >> kPhaseFractionBits; }
  /// The integer whose lower bits hold the units past the phase, and the function that extracts those units from
  /// several such integers in a register.
  std::int32_t bits() const { return static_cast<std::int32_t>(at.within); }
  template <typename R>
  static typename R::Integers unitsOf(typename R::Integers bits) {
    return R::bitAnd(bits, R::all32(kPhaseMask));
  }
  /// Whether this frame and the next three certainly lie before input frame `end`.
  bool isFourBefore(std::size_t end) const { return at.input + 3 * (std::size_t{step.inputs} + 1) < end; }
  void advance() { at.advance(step); }
  /// The position after `made` steps from `start`.
  ResamplePosition position(const StepRun&, const ResamplePosition&, std::size_t) const { return at; }

 private:
  ResampleStep step;
  ResamplePosition at;
};

/// As above, for a power of two as number of phases: input frame and phase are bit fields of one sum.
template <unsigned Phases>
class BinaryPlace {
  static_assert(std::has_single_bit(Phases));

 public:
  static constexpr bool kIsLinear = false;
  static constexpr std::uint32_t kUnitsPerInput = Phases << kPhaseFractionBits;

  BinaryPlace(const StepRun& steps, const ResamplePosition& position)
      : stepUnits(std::uint64_t{steps.step().inputs} * kUnitsPerInput + steps.step().units),
        stepFraction(steps.step().fraction),
        at(std::uint64_t{position.input} * kUnitsPerInput + position.within),
        fraction(position.fraction) {}

  std::size_t input() const { return at / kUnitsPerInput; }
  std::size_t phase() const { return at >> kPhaseFractionBits & (Phases - 1); }
  std::int32_t bits() const { return static_cast<std::int32_t>(static_cast<std::uint32_t>(at)); }
  template <typename R>
  static typename R::Integers unitsOf(typename R::Integers bits) {
    return AnyPlace::unitsOf<R>(bits);
  }
  bool isFourBefore(std::size_t end) const { return at + 3 * (stepUnits + 1) < std::uint64_t{end} * kUnitsPerInput; }
  void advance() {
    at += stepUnits;
    fraction += stepFraction;
    if (fraction >= 1.0F) {
      fraction -= 1.0F;
      ++at;
    }
  }
  ResamplePosition position(const StepRun&, const ResamplePosition&, std::size_t) const {
    return {input(), static_cast<std::uint32_t>(at % kUnitsPerInput), fraction};
  }

 private:
  std::uint64_t stepUnits;
  float stepFraction;
  std::uint64_t at;
  float fraction;
};

/// The position as one integer, to which each step adds a constant, for designs with `StepRun::fixedStep`. Its lower 32
/// bits are the units past a phase and, below them, the fraction of a unit.
template <unsigned Phases>
class FixedPlace {
  static_assert(std::has_single_bit(Phases) && kPhaseFractionBits + StepRun::kFixedBits == 32);

 public:
  static constexpr bool kIsLinear = true;

  FixedPlace(const StepRun& steps, const ResamplePosition& start)
      : step(steps.fixedStep()), at(steps.fixedPlace(start)) {}

  std::size_t input() const { return at / kPerInput; }
  std::size_t phase() const { return at >> 32U & (Phases - 1); }
  std::int32_t bits() const { return static_cast<std::int32_t>(static_cast<std::uint32_t>(at)); }
  std::int32_t stepBits() const { return static_cast<std::int32_t>(static_cast<std::uint32_t>(step)); }
  template <typename R>
  static typename R::Integers unitsOf(typename R::Integers bits) {
    return R::template shiftRightUnsigned32<StepRun::kFixedBits>(bits);
  }
  bool isFourBefore(std::size_t end) const {
    return static_cast<std::int64_t>(at) < static_cast<std::int64_t>(end * kPerInput - 3 * step);
  }
  void advance() { at += step; }
  ResamplePosition position(const StepRun& steps, const ResamplePosition& start, std::size_t made) const {
    return steps.later(start, made);
  }

 private:
  static constexpr std::uint64_t kPerInput = std::uint64_t{Phases} << 32U;

  std::uint64_t step;
  std::uint64_t at;
};

/// The dot products of output frames, in registers that hold a whole group of taps or half of one. `Groups` is the
/// number of groups if it is known at compile time, else 0.
template <typename R, std::size_t Groups, typename Place>
class Dots {
  using Floats = typename R::Floats;
  using Integers = typename R::Integers;
  using Four = typename HalfOf<R>::Registers;
  using FourFloats = typename Four::Floats;
  static constexpr std::size_t kLanes = R::kBytes / sizeof(float);
  static constexpr std::size_t kParts = 8 / kLanes;

  /// For each lane of a weight register, the output frame that it belongs to.
  alignas(R::kBytes) static constexpr auto kOrder = [] {
    if constexpr (kParts == 2) {
      return std::array<std::int32_t, 4>{0, 1, 2, 3};
    } else {
      return std::array<std::int32_t, 8>{0, 2, 0, 2, 1, 3, 1, 3};
    }
  }();

 public:
  /// Computes the next frame. It lies a / 2^14 past a phase: (1 - a) times that phase's sum plus a times the next
  /// phase's.
  [[gnu::always_inline]] static void makeOne(const ResampleRun& run, Place& at, std::size_t made) {
    const FourFloats units = Four::floatsOf(Place::template unitsOf<Four>(Four::all32(at.bits())));
    const FourFloats weights = Four::fourFloats(1.0F, 1.0F, 0.0F, 0.0F) +
                               Four::fourFloats(-kPhaseScale, -kPhaseScale, kPhaseScale, kPhaseScale) * units;
    Floats sums;
    addTaps(run, at, sums);
    FourFloats parts = weights;
    if constexpr (kParts == 2) {
      parts *= sums;
    } else {
      parts *= R::upper(sums) + R::lower(sums);
    }
    const FourFloats frame = parts + Four::highHalves(parts, parts);
    run.outLeft[made] = Four::firstFloat(frame);
    run.outRight[made] = Four::secondFloat(frame);
  }

  /// Computes the next four frames, whose weights are applied side by side.
  [[gnu::always_inline]] static void makeFour(const ResampleRun& run, Place& at, std::size_t made) {
    Floats ofNext;
    Floats sums[4];
    if constexpr (Place::kIsLinear) {
      const Integers later = R::mulLow32(R::all32(at.stepBits()), R::loadAligned(kOrder.data()));
      ofNext = R::floatsOf(Place::template unitsOf<R>(R::add32(R::all32(at.bits()), later)));
      for (Floats& ofFrame : sums) {
        addTaps(run, at, ofFrame);
      }
    } else {
      alignas(Four::kBytes) std::int32_t bits[4];
#pragma GCC unroll 4
      for (std::size_t frame = 0; frame < 4; ++frame) {
        bits[frame] = at.bits();
        // Without this the compiler would merge two values in a register before it stores them.
        asm("" : "+m"(bits[frame]));
        addTaps(run, at, sums[frame]);
      }
      const FourFloats units = Four::floatsOf(Place::template unitsOf<Four>(Four::loadAligned(bits)));
      if constexpr (kParts == 2) {
        ofNext = units;
      } else {
        ofNext = R::halvesTwice(Four::zipLow32(units, Four::highHalves(units, units)));
      }
    }
    ofNext *= R::allFloats(kPhaseScale);
    const Floats ofPhase = R::allFloats(1.0F) - ofNext;
    if constexpr (kParts == 2) {
      const Floats phaseA = R::zipLow32(sums[0], sums[1]);
      const Floats phaseB = R::zipLow32(sums[2], sums[3]);
      const Floats nextA = R::zipHigh32(sums[0], sums[1]);
      const Floats nextB = R::zipHigh32(sums[2], sums[3]);
      R::storeFloats(run.outLeft + made, R::lowHalves(phaseA, phaseB) * ofPhase + R::lowHalves(nextA, nextB) * ofNext);
      R::storeFloats(run.outRight + made,
                     R::highHalves(phaseA, phaseB) * ofPhase + R::highHalves(nextA, nextB) * ofNext);
    } else {
      const Floats first = R::joined(R::lower(sums[0]), R::lower(sums[1])) + R::joinedUppers(sums[0], sums[1]);
      const Floats second = R::joined(R::lower(sums[2]), R::lower(sums[3])) + R::joinedUppers(sums[2], sums[3]);
      const Floats frames = R::zipLow32(first, second) * ofPhase + R::zipHigh32(first, second) * ofNext;
      Four::storeFloats(run.outLeft + made, Four::zipLow32(R::lower(frames), R::upper(frames)));
      Four::storeFloats(run.outRight + made, Four::zipHigh32(R::lower(frames), R::upper(frames)));
    }
  }

 private:
  /// The sums of the next frame: left and right of the phase, then left and right of the next phase; in a 256-bit
  /// register each as two sums, one per half. Advances the position. Returns through a reference, because the compiler
  /// for Windows warns of a 256-bit return value.
  [[gnu::always_inline]] static void addTaps(const ResampleRun& run, Place& at, Floats& sums) {
    const std::size_t groups = Groups != 0 ? Groups : run.groups;
    const TapGroup* tables = run.tables + at.phase() * groupsApart(groups);
    const float* window = run.window + 2 * at.input();
    asm("" : "+r"(tables), "+r"(window));  // Without this the compiler would compute one address per group.
    Floats phase[kParts]{};
    Floats next[kParts]{};
    // The first products may replace the zeros in the sums: 24 taps have both signs, so a sum of zero never comes out
    // as -0.0.
    addGroup<Groups == kCommonGroups>(tables[0], window, phase, next);
    for (std::size_t i = 1; i < groups; ++i) {
      addGroup<false>(tables[i], window + 8 * i, phase, next);
    }
    at.advance();
    sums = R::lowHalves(phase[0], next[0]) + R::highHalves(phase[0], next[0]);
    if constexpr (kParts == 2) {
      sums += R::lowHalves(phase[1], next[1]) + R::highHalves(phase[1], next[1]);
    }
  }

  template <bool kFirst>
  [[gnu::always_inline]] static void addGroup(const TapGroup& taps, const float* window, Floats* phase, Floats* next) {
    addPart<kFirst, 0>(taps, window, phase, next);
    if constexpr (kParts == 2) {
      addPart<kFirst, 1>(taps, window, phase, next);
    }
  }

  /// `kPart` is a template parameter, because as a variable it would cost one address per group.
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
  Place at(*run.steps, position);
  std::size_t made = 0;
  for (; at.isFourBefore(run.frames); made += 4) {
    Dots<R, Groups, Place>::makeFour(run, at, made);
  }
  for (; at.input() < run.frames; ++made) {
    Dots<R, Groups, Place>::makeOne(run, at, made);
  }
  position = at.position(*run.steps, position, made);
  return made;
}

template <typename R>
std::size_t runResample(const ResampleRun& run, ResamplePosition& position) {
  using CommonPlace = BinaryPlace<kCommonPhases>;
  if (run.groups == kCommonGroups && run.steps->step().unitsPerInput == CommonPlace::kUnitsPerInput) {
    return run.steps->fixedStep() != 0 ? runWith<R, kCommonGroups, FixedPlace<kCommonPhases>>(run, position)
                                       : runWith<R, kCommonGroups, CommonPlace>(run, position);
  }
  return runWith<R, 0, AnyPlace>(run, position);
}

}  // namespace
}  // namespace tesh::bramel::vst
