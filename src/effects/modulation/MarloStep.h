// The laws of Marlo chorus and phase, sample by sample or on consecutive samples side by side. Phases, spread, the
// smoothed triangles and the highpasses depend on the previous sample and are computed in order. No line has feedback,
// so a register of input is written before its taps are read.
//
// Each source file that includes this compiles it for its own instruction set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/interfaces/Flushed.h"
#include "effects/modulation/MarloLanes.h"
#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

template <typename Lanes>
using MarloFloats = typename Lanes::Floats;

/// Rounds like `flushed`, and limits to -1.0 .. 1.0.
template <typename Floats>
Floats limited(Floats x) {
  const Floats top = Floats{} + 1.0F;
  const Floats y = flushed(x);
  const Floats above = y < -top ? -top : y;
  return above > top ? top : above;
}

template <typename Lanes>
MarloFloats<Lanes> loadMarlo(const std::int16_t* samples) {
  return flushed(Lanes::load(samples) / kMarloFullScale);
}

template <typename Lanes>
void storeMarlo(std::int16_t* samples, MarloFloats<Lanes> x) {
  Lanes::store(samples, limited(x) * kMarloFullScale);
}

/// Writes the register to the entries from `at` downwards.
template <typename Lanes>
void writeMarlo(MarloLine& line, std::size_t at, MarloFloats<Lanes> x) {
  float* const samples = line.samples.data();
  if (at >= Lanes::kCount - 1) [[likely]] {
    Lanes::storeDownwards(samples + at, x);
  } else {
    float upwards[Lanes::kCount];
    Lanes::storeDownwards(upwards + Lanes::kCount - 1, x);
    for (unsigned i = 0; i < Lanes::kCount; ++i) {
      samples[(at - i) & (MarloLine::kLength - 1)] = upwards[Lanes::kCount - 1 - i];
    }
  }
  samples[MarloLine::kLength] = samples[0];
}

/// The write position of each sample of a register whose first sample is written at `at`.
template <typename Lanes>
MarloFloats<Lanes> marloPositions(std::size_t at) {
  return Lanes::floatsOf(
      Lanes::downwards(static_cast<std::int32_t>(at), static_cast<std::int32_t>(MarloLine::kLength)));
}

/// Reads between two samples, interpolated. Positions are 0 to twice the length.
template <typename Lanes>
MarloFloats<Lanes> readMarlo(const MarloLine& line, MarloFloats<Lanes> position) {
  const MarloFloats<Lanes> wrapped = position >= MarloLine::kWrap ? position - MarloLine::kWrap : position;
  const auto whole = Lanes::truncated(wrapped);
  const MarloFloats<Lanes> fraction = wrapped - Lanes::floatsOf(whole);
  MarloFloats<Lanes> newer;
  MarloFloats<Lanes> older;
  Lanes::readPairs(line.samples.data(), whole, newer, older);
  return newer + (older - newer) * fraction;
}

/// Both channels of a register.
template <typename Lanes>
struct MarloPair {
  MarloFloats<Lanes> left;
  MarloFloats<Lanes> right;
};

/// The triangle at a phase of 0 to 1 cycles, -1.0 to 1.0, before its smoothing.
template <typename Floats>
Floats marloTriangle(Floats phase) {
  const Floats twice = 2.0F * phase;
  return phase >= 0.5F ? twice - 1.0F : 1.0F - twice;
}

/// A sample of a smoothed triangle.
template <typename Floats>
Floats smoothedTriangle(Floats lfo, Floats target) {
  return target + (lfo - target) * kMarloLfoKept;
}

/// The next samples of the smoothed triangles. Phase, spread and smoothing advance sample by sample, with both channels
/// of the smoothing in the lower two lanes.
template <typename Lanes>
MarloPair<Lanes> sweepMarlo(MarloSweep& sweep, const MarloSettings& to) {
  using Floats = MarloFloats<Lanes>;
  MarloSweep now = sweep;
  const Floats phase = Lanes::made([&] { return now.nextPhase(to); });
  const Floats spread = Lanes::made([&] { return now.nextSpread(to); });
  const Floats lagging = phase - (spread - 1.0F) * 0.5F;
  const Floats wrapped = lagging < 0.0F ? lagging + 1.0F : lagging;
  MarloPair<Lanes> triangles{marloTriangle(phase), marloTriangle(wrapped)};
  if constexpr (Lanes::kCount == 1) {
    now.leftLfo = smoothedTriangle(now.leftLfo, triangles.left);
    now.rightLfo = smoothedTriangle(now.rightLfo, triangles.right);
    triangles = {now.leftLfo, now.rightLfo};
  } else {
    using Four = cofu::registers::Registers128;
    MarloQuad quads[Lanes::kCount / 2];
    Lanes::interleave(triangles.left, triangles.right, quads);
    MarloQuad lfo = Four::fourFloats(now.leftLfo, now.rightLfo, 0.0F, 0.0F);
    for (MarloQuad& quad : quads) {
      const MarloQuad first = smoothedTriangle(lfo, quad);
      lfo = smoothedTriangle(first, Four::highHalves(quad, quad));
      quad = Four::lowHalves(first, lfo);
    }
    now.leftLfo = Four::firstFloat(lfo);
    now.rightLfo = Four::secondFloat(lfo);
    Lanes::separate(quads, triangles.left, triangles.right);
  }
  sweep = now;
  return triangles;
}

/// Advances by `count` samples of silence.
inline void skipSweep(MarloSweep& sweep, const MarloSettings& to, unsigned count) {
  MarloSweep now = sweep;
  for (unsigned i = 0; i < count; ++i) {
    sweepMarlo<MarloOne>(now, to);
  }
  sweep = now;
}

/// Writes a register of samples to the lines, reads the taps at `depth` times the triangle `lfo` plus `base` behind
/// them, and calls `sound(in, taps)` for the output.
template <typename Lanes, typename Law, typename Sound>
void stepMarlo(Law& law, const MarloPair<Lanes>& lfo, std::int16_t* left, std::int16_t* right, Sound&& sound) {
  MarloLines& lines = law.lines;
  const MarloPair<Lanes> in{loadMarlo<Lanes>(left), loadMarlo<Lanes>(right)};
  writeMarlo<Lanes>(lines.leftLine, lines.writeIndex, in.left);
  writeMarlo<Lanes>(lines.rightLine, lines.writeIndex, in.right);
  const MarloFloats<Lanes> at = marloPositions<Lanes>(lines.writeIndex);
  const MarloPair<Lanes> taps{readMarlo<Lanes>(lines.leftLine, lfo.left * Law::kDepth + at + Law::kBase),
                              readMarlo<Lanes>(lines.rightLine, lfo.right * Law::kDepth + at + Law::kBase)};
  const MarloPair<Lanes> out = sound(in, taps);
  storeMarlo<Lanes>(left, out.left);
  storeMarlo<Lanes>(right, out.right);
  lines.skip(Lanes::kCount);
}

/// Processes whole registers and returns the number of samples. The triangles are computed one register ahead:
/// triangles and sound each depend on their own last sample, so the processor can compute both at once.
template <typename Lanes, typename Law, typename Sound>
unsigned runMarlo(Law& law, std::int16_t* left, std::int16_t* right, unsigned count, Sound&& sound) {
  const unsigned whole = count - count % Lanes::kCount;
  if (whole == 0) {
    return 0;
  }
  MarloPair<Lanes> lfo = sweepMarlo<Lanes>(law.sweep, law.settings);
  unsigned done = 0;
  for (; done + Lanes::kCount < whole; done += Lanes::kCount) {
    const MarloPair<Lanes> next = sweepMarlo<Lanes>(law.sweep, law.settings);
    stepMarlo<Lanes>(law, lfo, left + done, right + done, sound);
    lfo = next;
  }
  stepMarlo<Lanes>(law, lfo, left + done, right + done, sound);
  return whole;
}

template <typename Lanes>
[[gnu::flatten]] unsigned runMarloPhase(MarloPhase& law, std::int16_t* left, std::int16_t* right,
                                        unsigned count) SIVRAY_NONBLOCKING {
  const auto sound = [](const MarloPair<Lanes>& in, const MarloPair<Lanes>& taps) {
    return MarloPair<Lanes>{(taps.left + in.left) * MarloPhase::kSumGain,
                            (taps.right + in.right) * MarloPhase::kSumGain};
  };
  return runMarlo<Lanes>(law, left, right, count, sound);
}

/// Transposes four registers, from one sample's four values each to one value's four samples each; and the reverse.
inline void transpose(MarloQuad& a, MarloQuad& b, MarloQuad& c, MarloQuad& d) {
  using Four = cofu::registers::Registers128;
  const MarloQuad lowAb = Four::zipLow32(a, b);
  const MarloQuad highAb = Four::zipHigh32(a, b);
  const MarloQuad lowCd = Four::zipLow32(c, d);
  const MarloQuad highCd = Four::zipHigh32(c, d);
  a = Four::lowHalves(lowAb, lowCd);
  b = Four::highHalves(lowAb, lowCd);
  c = Four::lowHalves(highAb, highCd);
  d = Four::highHalves(highAb, highCd);
}

/// The four highpasses of the chorus side by side: dry left, dry right, wet left, wet right.
struct MarloHighpasses {
  using Four = cofu::registers::Registers128;

  explicit MarloHighpasses(const MarloChorus& law) : previousInput(law.previousInputs), output(law.outputs) {}

  void putBack(MarloChorus& law) const {
    law.previousInputs = previousInput;
    law.outputs = output;
  }

  /// One sample of each: a one-pole highpass on an input that is scaled first.
  void run(MarloQuad& x) {
    const MarloQuad scaled = scale * x;
    output = flushed(kept * output + scaled - previousInput);
    previousInput = scaled;
    x = output;
  }

  /// Replaces four samples of each by the highpasses' outputs.
  void run(MarloQuad& dryLeft, MarloQuad& dryRight, MarloQuad& wetLeft, MarloQuad& wetRight) {
    transpose(dryLeft, dryRight, wetLeft, wetRight);
    run(dryLeft);
    run(dryRight);
    run(wetLeft);
    run(wetRight);
    transpose(dryLeft, dryRight, wetLeft, wetRight);
  }

  /// A register of each channel. `in` becomes the dry sound, `taps` the wet sound.
  template <typename Lanes>
  void runBoth(MarloPair<Lanes>& in, MarloPair<Lanes>& taps) {
    if constexpr (Lanes::kCount == 1) {
      MarloQuad x = Four::fourFloats(in.left, in.right, taps.left, taps.right);
      run(x);
      float four[4];
      Four::storeFloats(four, x);
      in = {four[0], four[1]};
      taps = {four[2], four[3]};
    } else {
      MarloQuad dryLeft[Lanes::kQuads];
      MarloQuad dryRight[Lanes::kQuads];
      MarloQuad wetLeft[Lanes::kQuads];
      MarloQuad wetRight[Lanes::kQuads];
      Lanes::split(in.left, dryLeft);
      Lanes::split(in.right, dryRight);
      Lanes::split(taps.left, wetLeft);
      Lanes::split(taps.right, wetRight);
      for (unsigned i = 0; i < Lanes::kQuads; ++i) {
        run(dryLeft[i], dryRight[i], wetLeft[i], wetRight[i]);
      }
      in = {Lanes::joined(dryLeft), Lanes::joined(dryRight)};
      taps = {Lanes::joined(wetLeft), Lanes::joined(wetRight)};
    }
  }

  MarloQuad previousInput;
  MarloQuad output;
  MarloQuad kept =
      Four::fourFloats(MarloChorus::kDryKept, MarloChorus::kDryKept, MarloChorus::kWetKept, MarloChorus::kWetKept);
  MarloQuad scale =
      Four::fourFloats(MarloChorus::kDryScale, MarloChorus::kDryScale, MarloChorus::kWetScale, MarloChorus::kWetScale);
};

/// The chorus output for input and taps of one channel, after the highpasses.
template <typename Floats>
Floats chorused(Floats dry, Floats wet) {
  return (wet * MarloChorus::kWetGain + dry) * MarloChorus::kSumGain;
}

template <typename Lanes>
[[gnu::flatten]] unsigned runMarloChorus(MarloChorus& law, std::int16_t* left, std::int16_t* right,
                                         unsigned count) SIVRAY_NONBLOCKING {
  MarloHighpasses highpasses(law);
  const auto sound = [&highpasses](const MarloPair<Lanes>& in, const MarloPair<Lanes>& taps) {
    MarloPair<Lanes> dry = in;
    MarloPair<Lanes> wet = taps;
    highpasses.runBoth<Lanes>(dry, wet);
    return MarloPair<Lanes>{chorused(dry.left, wet.left), chorused(dry.right, wet.right)};
  };
  const unsigned done = runMarlo<Lanes>(law, left, right, count, sound);
  highpasses.putBack(law);
  return done;
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
