// The phaser over a run of samples. The first two all-passes depend on their last sample through the feedback; the
// third and fourth do not. These two therefore run one sample late, in the same registers as the first two: each
// register holds left and right of the late stage, then of the early one. Oscillator and mix have no such dependency.
// LaneRun.h tells where this may be included.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/TwoKnobEffect.h"
#include "effects/interfaces/WordLanes.h"
#include "effects/modulation/Q60393Phaser.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Working values of a run, which are not state of the law. Left and right alternate; the input is mono.
struct PhaserWords {
  std::int32_t coefficients[2 * (kControlGrid + 2)];  ///< From the sample before the run to the one after it.
  std::int32_t inputs[kControlGrid + 1];
  std::int32_t outputs[2 * (kControlGrid + 2)];  ///< Of the last stage, from the sample before the run on.
};

/// (a * factor) >> 15 for words that fit 16 bits; the factor must not be negative.
template <typename R>
lanes::WordsIn<R> shortMul15(lanes::WordsIn<R> a, lanes::WordsIn<R> factor) {
  return lanes::WordsIn<R>{R::pairSums16(a.v, factor.v)}.template shiftedRight<15>();
}

/// The four all-passes, of which the third and fourth are one sample late.
template <typename R>
class PhaserStages {
  using Words = lanes::WordsIn<R>;

 public:
  /// Starts after the last sample of the previous run, with all stages at that sample.
  explicit PhaserStages(const Q60393Phaser& law)
      : input(pair(law.stages[0], law.stages[0])),
        outer(pair(law.stages[3], law.stages[1])),
        fed(pair(law.stages[2], law.stages[2])),
        leakedInput(leakTwice(input)),
        leakedOuter(leakTwice(outer)),
        leakedInner(leakTwice(pair(law.stages[4], law.stages[4]))) {}

  /// Computes the next sample of the early stages, with the input `x`, and the sample before it of the late ones.
  void step(std::int32_t x, const std::int32_t* coefficients) {
    const Words feedback = leak(shortMul15(fed, Words::all(Q60393Phaser::kResonance)));
    const Words first{R::saturated32((Words::all(x) + feedback).v)};
    input = Words{R::zipHigh64(fed.v, first.v)};
    const Words a = Words::load(coefficients);
    const Words lastLeakedOuter = leakedOuter;
    outer = allPass(a, leakedOuter, input, leakedInput);
    leakedInput = leakTwice(input);
    leakedOuter = leakTwice(outer);
    const Words oldInner{R::zipLow64(leakedInner.v, leakedInput.v)};
    inner = allPass(a, oldInner, outer, lastLeakedOuter);
    leakedInner = leakTwice(inner);
    fed = leakTwice(leakedInner);
  }

  /// Computes the first sample, which the late stages have already processed.
  void begin(std::int32_t x, const std::int32_t* coefficients) {
    const PhaserStages before = *this;
    step(x, coefficients);
    leakedOuter = joined(before.leakedOuter, leakedOuter);
    leakedInner = joined(before.leakedInner, leakedInner);
  }

  /// Computes the last sample of the late stages. Stores all stages in the law.
  void end(Q60393Phaser& law, const std::int32_t* coefficients) {
    law.stages[0] = early(input);
    law.stages[1] = early(outer);
    law.stages[2] = early(fed);
    step(0, coefficients);
    law.stages[3] = late(outer);
    law.stages[4] = late(inner);
  }

  /// Stores left and right of the last stage, one sample late, and two more words, which the next sample overwrites.
  void storeOutput(std::int32_t* to) const { inner.store(to); }

 private:
  static Words pair(StereoWords late, StereoWords early) { return {R::evens32(late.v, early.v)}; }
  static StereoWords late(Words words) { return {R::zipLow32(words.v, words.v)}; }
  static StereoWords early(Words words) { return {R::zipHigh32(words.v, words.v)}; }
  static Words joined(Words late, Words early) { return {R::zipLow64(late.v, R::zipHigh64(early.v, early.v))}; }

  static Words allPass(Words a, Words oldOutput, Words now, Words oldInput) {
    return {R::saturated32((shortMul15(oldOutput, a) - shortMul15(now, a) + oldInput).v)};
  }

  Words input;  ///< For stages 3 and 1.
  Words outer;  ///< For stages 3 and 1.
  Words inner;  ///< For stages 4 and 2.
  Words fed;    ///< Output of stage 2 for stage 3; only in the early half.
  Words leakedInput;
  Words leakedOuter;
  Words leakedInner;  ///< Only in the late half.
};

/// Advances the oscillators by `count` samples, a multiple of the words in a register, and writes the resulting
/// coefficients.
template <typename R>
void followOscillator(Q60393Phaser& law, std::int32_t* coefficients, unsigned count) {
  using namespace cofu::core;
  using Words = lanes::WordsIn<R>;
  const std::int32_t step = law.lfoStep;
  const Words depth = Words::all(law.depth.value());
  const auto at = [&](std::int32_t phase, unsigned done) {
    const Words moved = Words::after(wrapAdd(phase, wrapMul(step, static_cast<std::int32_t>(done))), step);
    const Words triangle = magnitude(moved).template shiftedRightUnsigned<16>();
    return Words::all(Q60393Phaser::kManual) - shortMul15(triangle - triangle.template shiftedRight<15>(), depth);
  };
  const std::int32_t left = law.phase.left();
  const std::int32_t right = law.phase.right();
  for (unsigned done = 0; done < count; done += Words::kCount) {
    const Words ofLeft = at(left, done);
    const Words ofRight = at(right, done);
    R::store(coefficients + 2 * done, R::zipLow32(ofLeft.v, ofRight.v));
    R::store(coefficients + 2 * done + Words::kCount, R::zipHigh32(ofLeft.v, ofRight.v));
  }
  const std::int32_t way = wrapMul(step, static_cast<std::int32_t>(count));
  law.phase = StereoWords::of(wrapAdd(left, way), wrapAdd(right, way));
}

/// The mean of both channels, eight samples at a time.
template <typename R>
void mixDown(const std::int16_t* left, const std::int16_t* right, std::int32_t* inputs, unsigned count) {
  for (unsigned done = 0; done < count; done += 8) {
    const auto halved = [](typename R::Integers both) {
      return R::template shiftRight32<1>(R::pairSums16(both, R::all16(1)));
    };
    const auto ofLeft = R::load(left + done);
    const auto ofRight = R::load(right + done);
    R::store(inputs + done, halved(R::zipLow16(ofLeft, ofRight)));
    R::store(inputs + done + 4, halved(R::zipHigh16(ofLeft, ofRight)));
  }
}

/// The mix of wet and dry sound, eight samples at a time.
template <typename R>
void mixOut(const std::int32_t* outputs, const std::int32_t* inputs, std::int16_t* left, std::int16_t* right,
            unsigned count) {
  using Words = lanes::WordsIn<R>;
  const auto mixed = [](const std::int32_t* wet, const std::int32_t* input) {
    const Words dry = shortMul15(Words::load(input), Words::all(cofu::core::kFullScale - Q60393Phaser::kWet));
    const auto both = [wet](unsigned at, Words more) {
      return (shortMul15(Words::load(wet + at), Words::all(Q60393Phaser::kWet)) + more).v;
    };
    const auto words = R::packed32(both(0, {R::zipLow32(dry.v, dry.v)}), both(4, {R::zipHigh32(dry.v, dry.v)}));
    return R::swappedMiddles16(R::max16(words, R::all16(-cofu::core::kFullScale)));
  };
  for (unsigned done = 0; done < count; done += 8) {
    const auto first = mixed(outputs + 2 * done, inputs + done);
    const auto second = mixed(outputs + 2 * done + 8, inputs + done + 4);
    R::store(left + done, R::evens32(first, second));
    R::store(right + done, R::odds32(first, second));
  }
}

/// A run of at most `kControlGrid` samples, in place; `R` are registers of 128 bits. Does not process short runs, which
/// the step does.
template <typename R>
[[gnu::flatten]] unsigned runPhaser(Q60393Phaser& law, std::int16_t* left, std::int16_t* right,
                                    unsigned count) SIVRAY_NONBLOCKING {
  constexpr unsigned kAtOnce = 8;
  if (count < kAtOnce) {
    return 0;
  }
  const unsigned whole = count - count % kAtOnce;
  PhaserWords words;
  followOscillator<R>(law, words.coefficients + 2, whole);
  mixDown<R>(left, right, words.inputs, whole);
  PhaserStages<R> stages(law);
  stages.begin(words.inputs[0], words.coefficients);
  for (unsigned i = 1; i < whole; ++i) {
    stages.step(words.inputs[i], words.coefficients + 2 * i);
    stages.storeOutput(words.outputs + 2 * i);
  }
  stages.end(law, words.coefficients + 2 * whole);
  stages.storeOutput(words.outputs + 2 * whole);
  mixOut<R>(words.outputs + 2, words.inputs, left, right, whole);
  return whole;
}

}  // namespace tesh::bramel::plugin::sivray::effects
