// The Marlo family: the class that runs its three laws, chorus, phase and ensemble, and what they share: settings,
// delay lines, smoothing and the moving tap. All arithmetic is single precision, one operation after the other as
// written. Only numbers that depend on nothing but the sample rate are computed in double precision and then kept as
// single.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "core/EngineRate.h"
#include "core/RealTime.h"
#include "effects/interfaces/Knobs.h"
#include "effects/interfaces/Silence.h"
#include "effects/interfaces/TwoKnobEffect.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The sample value that is 1.0 inside the Marlo effects.
inline constexpr float kMarloFullScale = 32767.0F;

/// Four values that do not mix: one for each voice, or for each highpass, of a sample.
using MarloQuad = cofu::registers::Registers128::Floats;

/// What the knobs set. Steps are what `marloSmoothed` gains per sample.
struct MarloSettings {
  float rate = 0.0F;        ///< Of the triangle, cycles per sample: 0.125 to 7 Hz.
  float depthStep = 0.0F;   ///< Of the ensemble's depth, which rests at 70.56 to 282.24 samples.
  float spreadStep = 0.0F;  ///< Of the spread, which rests at 1 to 2.
};

/// What a one-pole smoother with a time constant of 500 samples (11 ms) keeps of its value per sample, and what it
/// gains of its target.
inline constexpr float kMarloKept = 0.998F;
inline constexpr float kMarloGained = 0.002F;

inline float marloSmoothed(float value, float step) { return value * kMarloKept + step; }

/// One channel's delay line. It is written downwards, so that a larger position is an older sample.
struct MarloLine {
  static constexpr unsigned kLength = 4096;
  static constexpr auto kWrap = static_cast<float>(kLength);

  /// The last entry always copies entry 0, so that interpolation may read one past the end.
  std::array<float, kLength + 1> samples{};
};

/// Both channels' lines, which are written at the same place.
struct MarloLines {
  /// Whether the last `count` samples written to both lines are zero.
  bool isSilent(unsigned count) const {
    const std::size_t end = writeIndex + 1 + count;
    return isZeroBefore(leftLine.samples.data(), MarloLine::kLength, end, count) &&
           isZeroBefore(rightLine.samples.data(), MarloLine::kLength, end, count);
  }

  /// Moves on by `count` samples of silence over silence.
  void skip(unsigned count) { writeIndex = (writeIndex - count) & (MarloLine::kLength - 1); }

  void clear() {
    leftLine.samples.fill(0.0F);
    rightLine.samples.fill(0.0F);
    writeIndex = 0;
  }

  MarloLine leftLine;
  MarloLine rightLine;
  std::size_t writeIndex = 0;
};

/// The triangle that moves the taps of chorus and phase, on both sides: the right one lags by up to half a cycle.
struct MarloSweep {
  /// Move by one sample.
  float nextSpread(const MarloSettings& to) { return spread = marloSmoothed(spread, to.spreadStep); }
  float nextPhase(const MarloSettings& to) {
    phase -= to.rate;
    return phase = phase < 0.0F ? phase + 1.0F : phase;
  }

  float spread = 1.0F;
  float phase = 0.0F;    ///< Cycles, 0 to 1.
  float leftLfo = 0.0F;  ///< The smoothed triangles, -1.0 to 1.0.
  float rightLfo = 0.0F;
};

/// Share that the triangle's smoother keeps per sample: a corner of 3.3865754 Hz.
extern const float kMarloLfoKept;

/// What the three laws share.
struct MarloLaw {
  static constexpr LawParts kParts{.start = Knobs{},
                                   .otherRestart = kMarloRestart,
                                   .aims = true,
                                   .lanes = LaneParts::baselineAndAvx2,
                                   .sleepsAfter = MarloLine::kLength};

  using Settings = MarloSettings;

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void aim(const Settings& to, bool) { settings = to; }
  static bool fitsLanes(const Settings&) { return true; }

  bool isSilent(unsigned count) const { return lines.isSilent(count); }

  MarloLines lines;
  MarloSettings settings;  ///< Of the lanes.
};

/// `Law` is MarloChorus, MarloPhase or MarloEnsemble. Edit1 is the speed (the depth of the ensemble), Edit2 the spread.
/// It has no immediate mode: the smoothing of depth and spread always runs.
template <typename Law>
class SivrayFxIMarloEffects : public TwoKnobEffect<Law> {};

/// "Marlo Chorus": a moving tap beside the dry sound, both through a highpass. Models a chorus: one tap a channel, 150
/// to 226 samples late.
struct MarloChorus : MarloLaw {
  /// How far the triangle moves the tap to each side (37.6 samples), and where it rests (188.2 samples, 4.27 ms).
  static constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004267 * 0.2);
  static constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.0042666);

  /// The wet sound's share, and the gain of the sum that keeps it within full scale.
  static constexpr float kWetGain = 0.66666F;
  static constexpr float kSumGain = 0.75F;

  /// What the highpasses keep of their outputs per sample (corners of 48.2 and 32.2 Hz), and take of their inputs.
  static const float kDryKept;
  static const float kWetKept;
  static const float kDryScale;
  static const float kWetScale;

  void reset(const Settings&) {
    lines.clear();
    sweep = {};
    previousInputs = MarloQuad{};
    outputs = MarloQuad{};
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<MarloChorus> runBaseline;
  static const RunInLanes<MarloChorus> runAvx2;

  /// Whether silence gives silence and changes nothing: rounding may hold a highpass next to 0.
  bool isSilent(unsigned count) const SIVRAY_NONBLOCKING;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  MarloSweep sweep;

  // Of each highpass: dry left, dry right, wet left, wet right.
  MarloQuad previousInputs{};  ///< Scaled.
  MarloQuad outputs{};
};

extern template class TwoKnobEffect<MarloChorus>;

/// "Marlo Phase": a moving tap close to the dry sound, so that both cancel at moving frequencies. Models a flanger
/// without feedback: one tap a channel, 9 to 81 samples late.
struct MarloPhase : MarloLaw {
  /// How far the triangle moves the tap to each side (36.1 samples), and where it rests (45.2 samples, 1.02 ms).
  static constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004096 * 0.2);
  static constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.001024);

  static constexpr float kSumGain = 0.75F;

  void reset(const Settings&) {
    lines.clear();
    sweep = {};
  }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<MarloPhase> runBaseline;
  static const RunInLanes<MarloPhase> runAvx2;

  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  MarloSweep sweep;
};

extern template class TwoKnobEffect<MarloPhase>;

/// "Marlo Ensemble": three moving taps a channel and no dry sound. Models a string ensemble: each voice's tap is moved
/// by a fast and a slow sine, a third of a cycle apart from the next voice. The right voices follow the left ones at a
/// distance that Spread sets.
struct MarloEnsemble : MarloLaw {
  /// The phases of the voices on -2 .. 2, which is one cycle, and a fourth that copies the last and is not heard.
  static constexpr MarloQuad kStartPhases{0.6666667F, -0.6666667F, -2.0F, -2.0F};

  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<MarloEnsemble> runBaseline;
  static const RunInLanes<MarloEnsemble> runAvx2;

  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  float depth = static_cast<float>(0.0016 * cofu::core::kEngineRate);  ///< Samples; starts where Depth 0 rests.
  float spread = 1.0F;
  MarloQuad fast = kStartPhases;
  MarloQuad slow = kStartPhases;
};

extern template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
