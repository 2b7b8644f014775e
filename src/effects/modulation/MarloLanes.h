// The Marlo effects on consecutive samples side by side: conversion, lines and taps. What one sample hands to the next
// is still computed in turn. No line is fed back, so that a register of input is written before its taps are read.
//
// Each source file that includes this compiles it for its own instruction set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/modulation/MarloChorus.h"
#include "effects/modulation/MarloPhase.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// Two neighbours of a line, read at once as the bits of both.
inline std::int64_t pairAt(const float* from, std::int32_t index) {
  std::int64_t pair = 0;
  std::memcpy(&pair, from + static_cast<std::uint32_t>(index), sizeof(pair));
  return pair;
}
using MarloQuad = float __attribute__((vector_size(16)));
using MarloTwoPairs = std::int64_t __attribute__((vector_size(16)));

/// Four consecutive samples.
struct MarloFour {
  static constexpr unsigned kCount = 4;
  using Floats = float __attribute__((vector_size(16)));
  using Integers = std::int32_t __attribute__((vector_size(16)));
  using Samples = std::int16_t __attribute__((vector_size(8)));
  static constexpr Integers kAscending{0, 1, 2, 3};
  static Floats reversed(Floats x) { return __builtin_shufflevector(x, x, 3, 2, 1, 0); }
  /// A register of `make(0)`, `make(1)` and so on, called in this order. None of them takes a detour through memory,
  /// where a register would have to wait for all of its parts to be written.
  template <typename Make>
  static Floats made(Make&& make) {
    const Floats values{make(0), make(1), make(2), make(3)};
    return values;
  }
  static constexpr unsigned kQuads = 1;
  static void split(Floats x, Floats* quads) { quads[0] = x; }
  static Floats joined(const Floats* quads) { return quads[0]; }
  /// Both channels of two samples a quad, in turn, and back.
  static void interleave(Floats left, Floats right, MarloQuad* quads) {
    quads[0] = __builtin_shufflevector(left, right, 0, 4, 1, 5);
    quads[1] = __builtin_shufflevector(left, right, 2, 6, 3, 7);
  }
  static void separate(const MarloQuad* quads, Floats& left, Floats& right) {
    left = __builtin_shufflevector(quads[0], quads[1], 0, 2, 4, 6);
    right = __builtin_shufflevector(quads[0], quads[1], 1, 3, 5, 7);
  }
  static void readPairs(const float* from, Integers at, Floats& first, Floats& second) {
    const MarloTwoPairs early{pairAt(from, at[0]), pairAt(from, at[1])};
    const MarloTwoPairs late{pairAt(from, at[2]), pairAt(from, at[3])};
    const auto a = reinterpret_cast<Floats>(early);
    const auto b = reinterpret_cast<Floats>(late);
    first = __builtin_shufflevector(a, b, 0, 2, 4, 6);
    second = __builtin_shufflevector(a, b, 1, 3, 5, 7);
  }
};

template <typename Form>
using MarloFloats = typename Form::Floats;

/// As `flushed` of Flushed.h.
template <typename Floats>
Floats flushedLanes(Floats x) {
  const Floats lifted = x + 1.0F;
  return lifted - 1.0F;
}

template <typename Form>
MarloFloats<Form> loadMarlo(const std::int16_t* samples) {
  typename Form::Samples words;
  std::memcpy(&words, samples, sizeof(words));
  return flushedLanes(__builtin_convertvector(words, MarloFloats<Form>) / kMarloFullScale);
}

/// Writes what `limited` and `marloSample` make of each lane.
template <typename Form>
void storeMarlo(std::int16_t* samples, MarloFloats<Form> x) {
  const MarloFloats<Form> top = MarloFloats<Form>{} + 1.0F;
  const MarloFloats<Form> y = flushedLanes(x);
  const MarloFloats<Form> above = y < -top ? -top : y;
  const MarloFloats<Form> limits = above > top ? top : above;
  const auto integers = __builtin_convertvector(limits * kMarloFullScale, typename Form::Integers);
  const auto words = __builtin_convertvector(integers, typename Form::Samples);
  std::memcpy(samples, &words, sizeof(words));
}

/// Writes the register to the entries from `at` downwards.
template <typename Form>
void writeMarlo(MarloLine& line, std::size_t at, MarloFloats<Form> x) {
  constexpr std::size_t kLast = Form::kCount - 1;
  float* const samples = line.samples.data();
  if (at >= kLast) [[likely]] {
    const MarloFloats<Form> downwards = Form::reversed(x);
    std::memcpy(samples + at - kLast, &downwards, sizeof(downwards));
  } else {
    for (unsigned i = 0; i < Form::kCount; ++i) {
      samples[(at - i) & (MarloLine::kLength - 1)] = x[i];
    }
  }
  samples[MarloLine::kLength] = samples[0];
}

/// The write position of each sample of a register whose first is written at `at`.
template <typename Form>
MarloFloats<Form> marloPositions(std::size_t at) {
  const auto first = static_cast<std::int32_t>(at);
  const auto positions = (first - Form::kAscending) & static_cast<std::int32_t>(MarloLine::kLength - 1);
  return __builtin_convertvector(positions, MarloFloats<Form>);
}

/// As MarloLine::read, for a position a lane.
template <typename Form>
MarloFloats<Form> readMarlo(const MarloLine& line, MarloFloats<Form> position) {
  const MarloFloats<Form> wrapped = position >= MarloLine::kWrap ? position - MarloLine::kWrap : position;
  const auto whole = __builtin_convertvector(wrapped, typename Form::Integers);
  const MarloFloats<Form> fraction = wrapped - __builtin_convertvector(whole, MarloFloats<Form>);
  const float* const samples = line.samples.data();
  MarloFloats<Form> newer;
  MarloFloats<Form> older;
  Form::readPairs(samples, whole, newer, older);
  return newer + (older - newer) * fraction;
}

/// Both channels of a register.
template <typename Form>
struct MarloPair {
  MarloFloats<Form> left;
  MarloFloats<Form> right;
};

/// As MarloSweep's triangle before its smoothing.
template <typename Floats>
Floats triangleLanes(Floats phase) {
  const Floats twice = 2.0F * phase;
  return phase >= 0.5F ? twice - 1.0F : 1.0F - twice;
}

/// As MarloSweep smooths its triangle, in the lower two lanes left and right.
inline MarloQuad smoothedLanes(MarloQuad lfo, MarloQuad target) { return target + (lfo - target) * kMarloLfoKept; }

/// The next samples of the smoothed triangles. Phase, spread and smoothing move sample by sample.
template <typename Form>
MarloPair<Form> sweepMarlo(MarloSweep& sweep, const MarloSettings& to) {
  using Floats = MarloFloats<Form>;
  MarloSweep now = sweep;
  const Floats phase = Form::made([&](int) { return now.nextPhase(to); });
  const Floats spread = Form::made([&](int) { return now.nextSpread(to); });
  const Floats lagging = phase - (spread - 1.0F) * 0.5F;
  const Floats left = triangleLanes(phase);
  const Floats right = triangleLanes<Floats>(lagging < 0.0F ? lagging + 1.0F : lagging);
  MarloQuad quads[Form::kCount / 2];
  Form::interleave(left, right, quads);
  MarloQuad lfo{now.leftLfo, now.rightLfo, 0.0F, 0.0F};
  for (MarloQuad& quad : quads) {
    const MarloQuad first = smoothedLanes(lfo, quad);
    lfo = smoothedLanes(first, __builtin_shufflevector(quad, quad, 2, 3, 2, 3));
    quad = __builtin_shufflevector(first, lfo, 0, 1, 4, 5);
  }
  now.leftLfo = lfo[0];
  now.rightLfo = lfo[1];
  sweep = now;
  MarloPair<Form> smoothed;
  Form::separate(quads, smoothed.left, smoothed.right);
  return smoothed;
}

/// Takes a register of samples in, reads the taps `depth` times the triangle `lfo` and `base` behind them, and lets
/// `sound(in, taps)` make the output.
template <typename Form, typename Law, typename Sound>
void stepMarlo(Law& law, const MarloPair<Form>& lfo, std::int16_t* left, std::int16_t* right, Sound&& sound) {
  MarloLines& lines = law.lines;
  const MarloPair<Form> in{loadMarlo<Form>(left), loadMarlo<Form>(right)};
  writeMarlo<Form>(lines.leftLine, lines.writeIndex, in.left);
  writeMarlo<Form>(lines.rightLine, lines.writeIndex, in.right);
  const MarloFloats<Form> at = marloPositions<Form>(lines.writeIndex);
  const MarloPair<Form> taps{readMarlo<Form>(lines.leftLine, lfo.left * Law::kDepth + at + Law::kBase),
                             readMarlo<Form>(lines.rightLine, lfo.right * Law::kDepth + at + Law::kBase)};
  const MarloPair<Form> out = sound(in, taps);
  storeMarlo<Form>(left, out.left);
  storeMarlo<Form>(right, out.right);
  lines.skip(Form::kCount);
}

/// Runs whole registers and returns the number of samples. The triangles are a register ahead: they and the sound wait
/// for their own last samples, so that the processor computes both at once.
template <typename Form, typename Law, typename Sound>
unsigned runMarlo(Law& law, std::int16_t* left, std::int16_t* right, unsigned count, Sound&& sound) {
  const unsigned whole = count - count % Form::kCount;
  if (whole == 0) {
    return 0;
  }
  MarloPair<Form> lfo = sweepMarlo<Form>(law.sweep, law.settings);
  unsigned done = 0;
  for (; done + Form::kCount < whole; done += Form::kCount) {
    const MarloPair<Form> next = sweepMarlo<Form>(law.sweep, law.settings);
    stepMarlo<Form>(law, lfo, left + done, right + done, sound);
    lfo = next;
  }
  stepMarlo<Form>(law, lfo, left + done, right + done, sound);
  return whole;
}

template <typename Form>
[[gnu::flatten]] unsigned runMarloPhase(MarloPhase& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  const auto sound = [](const MarloPair<Form>& in, const MarloPair<Form>& taps) {
    return MarloPair<Form>{(taps.left + in.left) * MarloPhase::kSumGain,
                           (taps.right + in.right) * MarloPhase::kSumGain};
  };
  return runMarlo<Form>(law, left, right, count, sound);
}

/// Turns four registers with the values of one sample each into registers with one value of each sample, and back.
inline void transpose(MarloQuad& a, MarloQuad& b, MarloQuad& c, MarloQuad& d) {
  const MarloQuad lowAb = __builtin_shufflevector(a, b, 0, 4, 1, 5);
  const MarloQuad highAb = __builtin_shufflevector(a, b, 2, 6, 3, 7);
  const MarloQuad lowCd = __builtin_shufflevector(c, d, 0, 4, 1, 5);
  const MarloQuad highCd = __builtin_shufflevector(c, d, 2, 6, 3, 7);
  a = __builtin_shufflevector(lowAb, lowCd, 0, 1, 4, 5);
  b = __builtin_shufflevector(lowAb, lowCd, 2, 3, 6, 7);
  c = __builtin_shufflevector(highAb, highCd, 0, 1, 4, 5);
  d = __builtin_shufflevector(highAb, highCd, 2, 3, 6, 7);
}

/// The four highpasses of the chorus: dry left, dry right, wet left, wet right.
struct MarloHighpasses {
  using Quad = MarloQuad;

  explicit MarloHighpasses(const MarloChorus& law)
      : previousInput{law.leftSide.dry.previousInput, law.rightSide.dry.previousInput, law.leftSide.wet.previousInput,
                      law.rightSide.wet.previousInput},
        output{law.leftSide.dry.output, law.rightSide.dry.output, law.leftSide.wet.output, law.rightSide.wet.output} {}

  void putBack(MarloChorus& law) const {
    law.leftSide = {{previousInput[0], output[0]}, {previousInput[2], output[2]}};
    law.rightSide = {{previousInput[1], output[1]}, {previousInput[3], output[3]}};
  }

  /// As MarloChorus::Highpass::run, four times in one.
  void run(Quad& x) {
    const Quad scaled = scale * x;
    output = flushedLanes(kept * output + scaled - previousInput);
    previousInput = scaled;
    x = output;
  }

  /// Turns four samples of each into what the highpasses make of them.
  void run(Quad& dryLeft, Quad& dryRight, Quad& wetLeft, Quad& wetRight) {
    transpose(dryLeft, dryRight, wetLeft, wetRight);
    run(dryLeft);
    run(dryRight);
    run(wetLeft);
    run(wetRight);
    transpose(dryLeft, dryRight, wetLeft, wetRight);
  }

  Quad previousInput;
  Quad output;
  Quad kept{MarloChorus::kDryKept, MarloChorus::kDryKept, MarloChorus::kWetKept, MarloChorus::kWetKept};
  Quad scale{MarloChorus::kDryScale, MarloChorus::kDryScale, MarloChorus::kWetScale, MarloChorus::kWetScale};
};

template <typename Form>
[[gnu::flatten]] unsigned runMarloChorus(MarloChorus& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  MarloHighpasses highpasses(law);
  const auto sound = [&highpasses](const MarloPair<Form>& in, const MarloPair<Form>& taps) {
    MarloHighpasses::Quad dryLeft[Form::kQuads];
    MarloHighpasses::Quad dryRight[Form::kQuads];
    MarloHighpasses::Quad wetLeft[Form::kQuads];
    MarloHighpasses::Quad wetRight[Form::kQuads];
    Form::split(in.left, dryLeft);
    Form::split(in.right, dryRight);
    Form::split(taps.left, wetLeft);
    Form::split(taps.right, wetRight);
    for (unsigned i = 0; i < Form::kQuads; ++i) {
      highpasses.run(dryLeft[i], dryRight[i], wetLeft[i], wetRight[i]);
    }
    const MarloPair<Form> dry{Form::joined(dryLeft), Form::joined(dryRight)};
    const MarloPair<Form> wet{Form::joined(wetLeft), Form::joined(wetRight)};
    return MarloPair<Form>{(wet.left * MarloChorus::kWetGain + dry.left) * MarloChorus::kSumGain,
                           (wet.right * MarloChorus::kWetGain + dry.right) * MarloChorus::kSumGain};
  };
  const unsigned done = runMarlo<Form>(law, left, right, count, sound);
  highpasses.putBack(law);
  return done;
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
