// The law of the Marlo ensemble, sample by sample or on consecutive samples side by side. The phases of the three
// voices advance sample by sample, side by side in a register. MarloStep.h tells who may include this.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/modulation/MarloStep.h"
#include "effects/modulation/SivrayFxIMarloEffects.h"

namespace tesh::bramel::plugin::sivray::effects {
namespace {

/// Phase steps per sample of the two sines: 5.2 Hz and 0.27 Hz, four units a cycle.
inline constexpr auto kFastStep = static_cast<float>(20.8 / cofu::core::kEngineRate);
inline constexpr auto kSlowStep = static_cast<float>(1.08 / cofu::core::kEngineRate);

/// How much each sine moves the tap, as a share of the depth: both are shifted to 0 .. 2, and the fast one counts a
/// twelfth.
inline constexpr float kSineScale = 0.499966F;
inline constexpr float kFastShare = 0.0833333F;

/// Phase between the sides at full spread: a sixth of a cycle.
inline constexpr float kSpreadScale = 0.666667F;

/// Gain of the sum of three voices.
inline constexpr float kEnsembleGain = 0.66666F;

// The sine of w * pi / 2 for w in -1 .. 1 as an odd polynomial, accurate to 0.0001, and the offset that moves it to 0
// .. 2.
inline constexpr float kSineLinear = 1.5703204F;
inline constexpr float kSineCubic = 0.6421143F;
inline constexpr float kSineFifth = 0.07186159F;
inline constexpr float kSineLift = 1.0000676F;

/// One cycle over phases of -2 .. 2: 2 at both ends, 0 in the middle.
template <typename Lanes>
MarloFloats<Lanes> liftedSine(MarloFloats<Lanes> phase) {
  using Floats = MarloFloats<Lanes>;
  const Floats w = Lanes::magnitude(phase) - 1.0F;
  const Floats square = w * w;
  const Floats linear = w * kSineLinear;
  const Floats cubic = square * kSineCubic * w;
  const Floats fifth = square * square * w * kSineFifth;
  return linear - cubic + fifth + kSineLift;
}

template <typename Lanes>
MarloFloats<Lanes> wrappedPhase(MarloFloats<Lanes> phase) {
  return Lanes::lessWhereAbove(phase, 2.0F, 4.0F);
}

/// The distance of a voice's tap behind the write position.
template <typename Lanes>
MarloFloats<Lanes> voiceDelay(MarloFloats<Lanes> fastPhase, MarloFloats<Lanes> slowPhase, MarloFloats<Lanes> depth) {
  const auto fast = liftedSine<Lanes>(fastPhase) * kSineScale * kFastShare;
  const auto slow = liftedSine<Lanes>(slowPhase) * kSineScale;
  return (fast + slow) * depth;
}

/// The values that move the voices of a register.
template <typename Lanes>
struct EnsembleMotion {
  MarloFloats<Lanes> fast[3];  ///< One per voice, on the left.
  MarloFloats<Lanes> slow[3];
  MarloFloats<Lanes> depth;
  MarloFloats<Lanes> distance;  ///< Phase difference between left and right.
};

/// Advances the phases of all voices by a register, sorted by voice.
template <typename Lanes>
void movePhases(MarloQuad& phases, float step, MarloFloats<Lanes>* byVoice) {
  using Four = MarloIn<cofu::registers::Registers128>;
  const auto next = [&] { return phases = wrappedPhase<Four>(phases + step); };
  if constexpr (Lanes::kCount == 1) {
    float voices[4];
    Four::Registers::storeFloats(voices, next());
    std::copy_n(voices, 3, byVoice);
  } else {
    MarloQuad moved[Lanes::kCount];
    for (MarloQuad& sample : moved) {
      sample = next();
    }
    for (unsigned i = 0; i < Lanes::kCount; i += 4) {
      transpose(moved[i], moved[i + 1], moved[i + 2], moved[i + 3]);
    }
    for (unsigned voice = 0; voice < 3; ++voice) {
      MarloQuad parts[Lanes::kQuads];
      for (unsigned i = 0; i < Lanes::kQuads; ++i) {
        parts[i] = moved[4 * i + voice];
      }
      byVoice[voice] = Lanes::joined(parts);
    }
  }
}

template <typename Lanes>
EnsembleMotion<Lanes> moveEnsemble(MarloEnsemble& law, MarloQuad& fast, MarloQuad& slow) {
  EnsembleMotion<Lanes> motion;
  const MarloSettings& to = law.settings;
  motion.depth = Lanes::made([&] { return law.depth = marloSmoothed(law.depth, to.depthStep); });
  const auto spread = Lanes::made([&] { return law.spread = marloSmoothed(law.spread, to.spreadStep); });
  motion.distance = (spread - 1.0F) * kSpreadScale;
  movePhases<Lanes>(fast, kFastStep, motion.fast);
  movePhases<Lanes>(slow, kSlowStep, motion.slow);
  return motion;
}

template <typename Lanes>
void stepEnsemble(MarloLines& lines, const EnsembleMotion<Lanes>& motion, std::int16_t* left, std::int16_t* right) {
  using Floats = MarloFloats<Lanes>;
  writeMarlo<Lanes>(lines.leftLine, lines.writeIndex, loadMarlo<Lanes>(left));
  writeMarlo<Lanes>(lines.rightLine, lines.writeIndex, loadMarlo<Lanes>(right));
  const Floats at = marloPositions<Lanes>(lines.writeIndex);
  Floats lefts[3];
  Floats rights[3];
  for (unsigned voice = 0; voice < 3; ++voice) {
    const Floats fast = motion.fast[voice];
    const Floats slow = motion.slow[voice];
    lefts[voice] = readMarlo<Lanes>(lines.leftLine, voiceDelay<Lanes>(fast, slow, motion.depth) + at);
    const Floats laterFast = wrappedPhase<Lanes>(fast + motion.distance);
    const Floats laterSlow = wrappedPhase<Lanes>(slow + motion.distance);
    rights[voice] = readMarlo<Lanes>(lines.rightLine, voiceDelay<Lanes>(laterFast, laterSlow, motion.depth) + at);
  }
  storeMarlo<Lanes>(left, (lefts[0] + lefts[1] + lefts[2]) * kEnsembleGain);
  storeMarlo<Lanes>(right, (rights[0] + rights[1] + rights[2]) * kEnsembleGain);
  lines.skip(Lanes::kCount);
}

/// Processes whole registers and returns the number of samples.
template <typename Lanes>
[[gnu::flatten]] unsigned runEnsemble(MarloEnsemble& law, std::int16_t* left, std::int16_t* right,
                                      unsigned count) SIVRAY_NONBLOCKING {
  MarloQuad fast = law.fast;
  MarloQuad slow = law.slow;
  unsigned done = 0;
  for (; done + Lanes::kCount <= count; done += Lanes::kCount) {
    stepEnsemble<Lanes>(law.lines, moveEnsemble<Lanes>(law, fast, slow), left + done, right + done);
  }
  law.fast = fast;
  law.slow = slow;
  return done;
}

/// Advances by `count` samples of silence.
inline void skipEnsemble(MarloEnsemble& law, unsigned count) {
  MarloQuad fast = law.fast;
  MarloQuad slow = law.slow;
  for (unsigned i = 0; i < count; ++i) {
    moveEnsemble<MarloOne>(law, fast, slow);
  }
  law.fast = fast;
  law.slow = slow;
  law.lines.skip(count);
}

}  // namespace
}  // namespace tesh::bramel::plugin::sivray::effects
