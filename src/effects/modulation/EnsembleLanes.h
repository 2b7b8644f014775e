// The law of the Marlo ensemble: for the three voices of one sample side by side, and for consecutive samples side by
// side. MarloLanes.h tells who may include this.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/modulation/MarloEnsemble.h"
#include "effects/modulation/MarloLanes.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// Phase steps per sample of the two sines: 5.2 Hz and 0.27 Hz, four units a cycle.
inline constexpr auto kFastStep = static_cast<float>(20.8 / cofu::core::kEngineRate);
inline constexpr auto kSlowStep = static_cast<float>(1.08 / cofu::core::kEngineRate);

/// How much each sine moves the tap, in depths: both are lifted to 0 .. 2, and the fast one counts a twelfth.
inline constexpr float kSineScale = 0.499966F;
inline constexpr float kFastShare = 0.0833333F;

/// Phase between the sides at full spread: a sixth of a cycle.
inline constexpr float kSpreadScale = 0.666667F;

/// Gain of the sum of three voices.
inline constexpr float kEnsembleGain = 0.66666F;

// The sine of w * pi / 2 for w in -1 .. 1 as an odd polynomial, within 0.0001, and what lifts it to 0 .. 2.
inline constexpr float kSineLinear = 1.5703204F;
inline constexpr float kSineCubic = 0.6421143F;
inline constexpr float kSineFifth = 0.07186159F;
inline constexpr float kSineLift = 1.0000676F;

template <typename Floats>
using MasksOf = decltype(Floats{} > Floats{});

/// One cycle over phases of -2 .. 2: 2 at both ends, 0 in the middle.
template <typename Floats>
Floats liftedSine(Floats phase) {
  const auto magnitude = reinterpret_cast<Floats>(reinterpret_cast<MasksOf<Floats>>(phase) & 0x7FFFFFFF);
  const Floats w = magnitude - 1.0F;
  const Floats square = w * w;
  const Floats linear = w * kSineLinear;
  const Floats cubic = square * kSineCubic * w;
  const Floats fifth = square * square * w * kSineFifth;
  return linear - cubic + fifth + kSineLift;
}

/// `value` less `amount` in the lanes of `mask`.
template <typename Floats>
Floats lessWhere(MasksOf<Floats> mask, Floats value, float amount) {
  const Floats amounts = Floats{} + amount;
  return value - reinterpret_cast<Floats>(mask & reinterpret_cast<MasksOf<Floats>>(amounts));
}

template <typename Floats>
Floats wrappedPhase(Floats phase) {
  return lessWhere(phase > 2.0F, phase, 4.0F);
}

/// How far behind the write position a voice is read.
template <typename Floats, typename Depth>
Floats voiceDelay(Floats fastPhase, Floats slowPhase, Depth depth) {
  const Floats fast = liftedSine(fastPhase) * kSineScale * kFastShare;
  const Floats slow = liftedSine(slowPhase) * kSineScale;
  return (fast + slow) * depth;
}

/// What moves the voices of a register.
template <typename Form>
struct EnsembleMotion {
  MarloFloats<Form> fast[3];  ///< Of each voice on the left.
  MarloFloats<Form> slow[3];
  MarloFloats<Form> depth;
  MarloFloats<Form> distance;  ///< Phase from the left to the right.
};

/// Moves the phases of all voices by a register and hands them out by voice.
template <typename Form>
void movePhases(MarloEnsemble::Voices& phases, float step, MarloFloats<Form>* byVoice) {
  MarloQuad moved[Form::kCount];
  for (MarloQuad& sample : moved) {
    phases = wrappedPhase(phases + step);
    sample = phases;
  }
  for (unsigned i = 0; i < Form::kCount; i += 4) {
    transpose(moved[i], moved[i + 1], moved[i + 2], moved[i + 3]);
  }
  for (unsigned voice = 0; voice < 3; ++voice) {
    MarloQuad parts[Form::kQuads];
    for (unsigned i = 0; i < Form::kQuads; ++i) {
      parts[i] = moved[4 * i + voice];
    }
    byVoice[voice] = Form::joined(parts);
  }
}

template <typename Form>
EnsembleMotion<Form> moveEnsemble(MarloEnsemble& law) {
  EnsembleMotion<Form> motion;
  const MarloSettings& to = law.settings;
  motion.depth = Form::made([&](int) { return law.depth = marloSmoothed(law.depth, to.depthStep); });
  const auto spread = Form::made([&](int) { return law.spread = marloSmoothed(law.spread, to.spreadStep); });
  motion.distance = (spread - 1.0F) * kSpreadScale;
  movePhases<Form>(law.fast, kFastStep, motion.fast);
  movePhases<Form>(law.slow, kSlowStep, motion.slow);
  return motion;
}

template <typename Form>
void stepEnsemble(MarloLines& lines, const EnsembleMotion<Form>& motion, std::int16_t* left, std::int16_t* right) {
  using Floats = MarloFloats<Form>;
  writeMarlo<Form>(lines.leftLine, lines.writeIndex, loadMarlo<Form>(left));
  writeMarlo<Form>(lines.rightLine, lines.writeIndex, loadMarlo<Form>(right));
  const Floats at = marloPositions<Form>(lines.writeIndex);
  Floats lefts[3];
  Floats rights[3];
  for (unsigned voice = 0; voice < 3; ++voice) {
    const Floats fast = motion.fast[voice];
    const Floats slow = motion.slow[voice];
    lefts[voice] = readMarlo<Form>(lines.leftLine, voiceDelay(fast, slow, motion.depth) + at);
    const Floats laterFast = wrappedPhase(fast + motion.distance);
    const Floats laterSlow = wrappedPhase(slow + motion.distance);
    rights[voice] = readMarlo<Form>(lines.rightLine, voiceDelay(laterFast, laterSlow, motion.depth) + at);
  }
  storeMarlo<Form>(left, (lefts[0] + lefts[1] + lefts[2]) * kEnsembleGain);
  storeMarlo<Form>(right, (rights[0] + rights[1] + rights[2]) * kEnsembleGain);
  lines.skip(Form::kCount);
}

/// Runs whole registers and returns the number of samples.
template <typename Form>
[[gnu::flatten]] unsigned runEnsemble(MarloEnsemble& law, std::int16_t* left, std::int16_t* right, unsigned count) {
  unsigned done = 0;
  for (; done + Form::kCount <= count; done += Form::kCount) {
    stepEnsemble<Form>(law.lines, moveEnsemble<Form>(law), left + done, right + done);
  }
  return done;
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
