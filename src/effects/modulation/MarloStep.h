// The laws of Marlo chorus and phase, sample by sample or on consecutive samples side by side. What one sample hands to
// the next is computed in turn: phases, spread, the smoothed triangles and the highpasses. No line is fed back, so that
// a register of input is written before its taps are read.
//
// Each source file that includes this compiles it for its own instruction set, so everything here has internal linkage.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/interfaces/Flushed.h"
#include "effects/modulation/MarloChorus.h"
#include "effects/modulation/MarloForms.h"
#include "effects/modulation/MarloPhase.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

template <typename Form>
using MarloFloats = typename Form::Floats;

/// Limits to -1.0 .. 1.0.
template <typename Floats>
Floats limited(Floats x) {
  const Floats top = Floats{} + 1.0F;
  const Floats y = flushed(x);
  const Floats above = y < -top ? -top : y;
  return above > top ? top : above;
}

template <typename Form>
MarloFloats<Form> loadMarlo(const std::int16_t* samples) {
  return flushed(Form::load(samples) / kMarloFullScale);
}

template <typename Form>
void storeMarlo(std::int16_t* samples, MarloFloats<Form> x) {
  Form::store(samples, limited(x) * kMarloFullScale);
}

/// Writes the register to the entries from `at` downwards.
template <typename Form>
void writeMarlo(MarloLine& line, std::size_t at, MarloFloats<Form> x) {
  float* const samples = line.samples.data();
  if (at >= Form::kCount - 1) [[likely]] {
    Form::storeDownwards(samples + at, x);
  } else {
    float upwards[Form::kCount];
    Form::storeDownwards(upwards + Form::kCount - 1, x);
    for (unsigned i = 0; i < Form::kCount; ++i) {
      samples[(at - i) & (MarloLine::kLength - 1)] = upwards[Form::kCount - 1 - i];
    }
  }
  samples[MarloLine::kLength] = samples[0];
}

/// The write position of each sample of a register whose first is written at `at`.
template <typename Form>
MarloFloats<Form> marloPositions(std::size_t at) {
  return Form::floatsOf(Form::downwards(static_cast<std::int32_t>(at), static_cast<std::int32_t>(MarloLine::kLength)));
}

/// Reads between two samples. Positions are 0 to twice the length.
template <typename Form>
MarloFloats<Form> readMarlo(const MarloLine& line, MarloFloats<Form> position) {
  const MarloFloats<Form> wrapped = position >= MarloLine::kWrap ? position - MarloLine::kWrap : position;
  const auto whole = Form::truncated(wrapped);
  const MarloFloats<Form> fraction = wrapped - Form::floatsOf(whole);
  MarloFloats<Form> newer;
  MarloFloats<Form> older;
  Form::readPairs(line.samples.data(), whole, newer, older);
  return newer + (older - newer) * fraction;
}

/// Both channels of a register.
template <typename Form>
struct MarloPair {
  MarloFloats<Form> left;
  MarloFloats<Form> right;
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

/// The next samples of the smoothed triangles. Phase, spread and smoothing move sample by sample, both channels of the
/// smoothing in the lower two lanes.
template <typename Form>
MarloPair<Form> sweepMarlo(MarloSweep& sweep, const MarloSettings& to) {
  using Floats = MarloFloats<Form>;
  MarloSweep now = sweep;
  const Floats phase = Form::made([&] { return now.nextPhase(to); });
  const Floats spread = Form::made([&] { return now.nextSpread(to); });
  const Floats lagging = phase - (spread - 1.0F) * 0.5F;
  const Floats wrapped = lagging < 0.0F ? lagging + 1.0F : lagging;
  MarloPair<Form> triangles{marloTriangle(phase), marloTriangle(wrapped)};
  if constexpr (Form::kCount == 1) {
    now.leftLfo = smoothedTriangle(now.leftLfo, triangles.left);
    now.rightLfo = smoothedTriangle(now.rightLfo, triangles.right);
    triangles = {now.leftLfo, now.rightLfo};
  } else {
    using Four = cofu::registers::Registers128;
    MarloQuad quads[Form::kCount / 2];
    Form::interleave(triangles.left, triangles.right, quads);
    MarloQuad lfo = Four::fourFloats(now.leftLfo, now.rightLfo, 0.0F, 0.0F);
    for (MarloQuad& quad : quads) {
      const MarloQuad first = smoothedTriangle(lfo, quad);
      lfo = smoothedTriangle(first, Four::highHalves(quad, quad));
      quad = Four::lowHalves(first, lfo);
    }
    now.leftLfo = Four::firstFloat(lfo);
    now.rightLfo = Four::secondFloat(lfo);
    Form::separate(quads, triangles.left, triangles.right);
  }
  sweep = now;
  return triangles;
}

/// `count` samples of silence.
inline void skipSweep(MarloSweep& sweep, const MarloSettings& to, unsigned count) {
  MarloSweep now = sweep;
  for (unsigned i = 0; i < count; ++i) {
    sweepMarlo<MarloOne>(now, to);
  }
  sweep = now;
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

  explicit MarloHighpasses(const MarloChorus& law)
      : previousInput(Four::loadFloats(law.previousInputs.data())), output(Four::loadFloats(law.outputs.data())) {}

  void putBack(MarloChorus& law) const {
    Four::storeFloats(law.previousInputs.data(), previousInput);
    Four::storeFloats(law.outputs.data(), output);
  }

  /// Whether the highpasses are where the law has them.
  bool rest(const MarloChorus& law) const {
    MarloChorus::Highpasses inputs;
    MarloChorus::Highpasses sounds;
    Four::storeFloats(inputs.data(), previousInput);
    Four::storeFloats(sounds.data(), output);
    return inputs == law.previousInputs && sounds == law.outputs;
  }

  /// One sample of each: a one-pole highpass on an input that is scaled first.
  void run(MarloQuad& x) {
    const MarloQuad scaled = scale * x;
    output = flushed(kept * output + scaled - previousInput);
    previousInput = scaled;
    x = output;
  }

  /// Turns four samples of each into what the highpasses make of them.
  void run(MarloQuad& dryLeft, MarloQuad& dryRight, MarloQuad& wetLeft, MarloQuad& wetRight) {
    transpose(dryLeft, dryRight, wetLeft, wetRight);
    run(dryLeft);
    run(dryRight);
    run(wetLeft);
    run(wetRight);
    transpose(dryLeft, dryRight, wetLeft, wetRight);
  }

  /// A register of each channel. `in` becomes dry, `taps` wet.
  template <typename Form>
  void runBoth(MarloPair<Form>& in, MarloPair<Form>& taps) {
    if constexpr (Form::kCount == 1) {
      MarloQuad x = Four::fourFloats(in.left, in.right, taps.left, taps.right);
      run(x);
      float four[4];
      Four::storeFloats(four, x);
      in = {four[0], four[1]};
      taps = {four[2], four[3]};
    } else {
      MarloQuad dryLeft[Form::kQuads];
      MarloQuad dryRight[Form::kQuads];
      MarloQuad wetLeft[Form::kQuads];
      MarloQuad wetRight[Form::kQuads];
      Form::split(in.left, dryLeft);
      Form::split(in.right, dryRight);
      Form::split(taps.left, wetLeft);
      Form::split(taps.right, wetRight);
      for (unsigned i = 0; i < Form::kQuads; ++i) {
        run(dryLeft[i], dryRight[i], wetLeft[i], wetRight[i]);
      }
      in = {Form::joined(dryLeft), Form::joined(dryRight)};
      taps = {Form::joined(wetLeft), Form::joined(wetRight)};
    }
  }

  MarloQuad previousInput;
  MarloQuad output;
  MarloQuad kept =
      Four::fourFloats(MarloChorus::kDryKept, MarloChorus::kDryKept, MarloChorus::kWetKept, MarloChorus::kWetKept);
  MarloQuad scale =
      Four::fourFloats(MarloChorus::kDryScale, MarloChorus::kDryScale, MarloChorus::kWetScale, MarloChorus::kWetScale);
};

/// What the chorus makes of input and taps of one channel behind the highpasses.
template <typename Floats>
Floats chorused(Floats dry, Floats wet) {
  return (wet * MarloChorus::kWetGain + dry) * MarloChorus::kSumGain;
}

template <typename Form>
[[gnu::flatten]] unsigned runMarloChorus(MarloChorus& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  MarloHighpasses highpasses(law);
  const auto sound = [&highpasses](const MarloPair<Form>& in, const MarloPair<Form>& taps) {
    MarloPair<Form> dry = in;
    MarloPair<Form> wet = taps;
    highpasses.runBoth<Form>(dry, wet);
    return MarloPair<Form>{chorused(dry.left, wet.left), chorused(dry.right, wet.right)};
  };
  const unsigned done = runMarlo<Form>(law, left, right, count, sound);
  highpasses.putBack(law);
  return done;
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
