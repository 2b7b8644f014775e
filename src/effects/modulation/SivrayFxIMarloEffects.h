// The Marlo family: the class that runs its three laws (chorus, phase and ensemble) and their common elements:
// settings, delay lines, smoothing and the moving tap. All arithmetic is single precision, in exactly the order in
// which it is written. Constants that depend only on the sample rate are computed in double precision and rounded to
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

/// Four independent values of a sample: one per voice or per highpass.
using MarloQuad = cofu::registers::Registers128::Floats;

/// The settings of the knobs. Steps are the amounts that `marloSmoothed` adds per sample.
struct MarloSettings {
  float rate = 0.0F;        ///< The triangle's rate in cycles per sample: 0.125 to 7 Hz.
  float depthStep = 0.0F;   ///< For the ensemble's depth, which settles at 70.56 to 282.24 samples.
  float spreadStep = 0.0F;  ///< For the spread, which settles at 1 to 2.
};

/// A one-pole smoother with a time constant of 500 samples (11 ms): the share of its value that it keeps per sample,
/// and the share of its target that it adds.
inline constexpr float kMarloKept = 0.998F;
inline constexpr float kMarloGained = 0.002F;

inline float marloSmoothed(float value, float step) { return value * kMarloKept + step; }

/// One channel's delay line. It is written downwards, so a higher position is an older sample.
struct MarloLine {
  static constexpr unsigned kLength = 4096;
  static constexpr auto kWrap = static_cast<float>(kLength);

  /// The last entry is always a copy of entry 0, so that interpolation may read one past the end.
  std::array<float, kLength + 1> samples{};
};

/// Both channels' lines, which are written at the same position.
struct MarloLines {
  /// Whether the last `count` samples written to both lines are zero.
  bool isSilent(unsigned count) const {
    const std::size_t end = writeIndex + 1 + count;
    return isZeroBefore(leftLine.samples.data(), MarloLine::kLength, end, count) &&
           isZeroBefore(rightLine.samples.data(), MarloLine::kLength, end, count);
  }

  /// Advances by `count` samples of silence, over samples that are already silent.
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

/// The triangle that sweeps the taps of chorus and phase, for both channels: the right one lags by up to half a cycle.
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

/// Common to the three laws.
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
  MarloSettings settings;  ///< For the lanes.
};

/// `Law` is MarloChorus, MarloPhase or MarloEnsemble. Edit1 is the speed (the depth of the ensemble), Edit2 the spread.
/// It has no immediate mode: the smoothing of depth and spread always runs.
template <typename Law>
class SivrayFxIMarloEffects : public TwoKnobEffect<Law> {};

/// "Marlo Chorus": a moving tap added to the dry sound, both through a highpass. Models a chorus with one tap per
/// channel, delayed by 150 to 226 samples.
struct MarloChorus : MarloLaw {
  /// Deviation of the tap to each side (37.6 samples), and its mean delay (188.2 samples, 4.27 ms).
  static constexpr auto kDepth = static_cast<float>(cofu::core::kEngineRate * 0.004267 * 0.2);
  static constexpr auto kBase = static_cast<float>(cofu::core::kEngineRate * 0.0042666);

  /// The wet sound's gain, and the gain of the sum that keeps it within full scale.
  static constexpr float kWetGain = 0.66666F;
  static constexpr float kSumGain = 0.75F;

  /// The shares of their outputs that the highpasses keep per sample (corners of 48.2 and 32.2 Hz), and the gains of
  /// their inputs.
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

  /// Whether silent input gives silent output and changes nothing. Rounding may hold a highpass next to 0.
  bool isSilent(unsigned count) const SIVRAY_NONBLOCKING;
  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  MarloSweep sweep;

  // Of each highpass: dry left, dry right, wet left, wet right.
  MarloQuad previousInputs{};  ///< Scaled.
  MarloQuad outputs{};
};

extern template class TwoKnobEffect<MarloChorus>;

/// "Marlo Phase": a moving tap close to the dry sound, so that both cancel at moving frequencies. Models a flanger
/// without feedback, with one tap per channel, delayed by 9 to 81 samples.
struct MarloPhase : MarloLaw {
  /// Deviation of the tap to each side (36.1 samples), and its mean delay (45.2 samples, 1.02 ms).
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

/// "Marlo Ensemble": three moving taps per channel and no dry sound. Models a string ensemble: a fast and a slow sine
/// move each voice's tap, a third of a cycle apart from the next voice. The right voices follow the left ones at a
/// phase difference that Spread sets.
struct MarloEnsemble : MarloLaw {
  /// The phases of the voices on -2 .. 2, which is one cycle. The fourth copies the last and is not heard.
  static constexpr MarloQuad kStartPhases{0.6666667F, -0.6666667F, -2.0F, -2.0F};

  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<MarloEnsemble> runBaseline;
  static const RunInLanes<MarloEnsemble> runAvx2;

  void skip(const Settings& to, unsigned count) SIVRAY_NONBLOCKING;

  float depth = static_cast<float>(0.0016 * cofu::core::kEngineRate);  ///< Samples; starts at the value of Depth 0.
  float spread = 1.0F;
  MarloQuad fast = kStartPhases;
  MarloQuad slow = kStartPhases;
};

extern template class TwoKnobEffect<MarloEnsemble>;

}  // namespace tesh::bramel::plugin::sivray::effects
