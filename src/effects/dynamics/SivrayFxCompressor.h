// "Compressor" for single sounds, with a wide range of sensitivity, and "Master Compressor" for a whole mix, with a low
// and narrow range.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/FixedPoint.h"
#include "effects/interfaces/Silence.h"
#include "effects/interfaces/SmoothedValue.h"
#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a feedback compressor: gain += rise - gain * envelope. Both channels share one detector, which keeps the
/// stereo image.
struct CompressorGain {
  /// Removes the DC of one channel, whose samples have up to 15 additional bits here. CompressorStep.h computes it.
  struct DcBlock {
    std::int64_t previousInput = 0;
    std::int64_t highpass = 0;  ///< -kLimit to kLimit.

    static constexpr std::int32_t kLimit = 1073741823;

    /// Share of the output that is kept per sample, in so many fractional bits: 0.9922, a corner of 55 Hz.
    static constexpr std::int32_t kKept = 127;
    static constexpr int kKeptBits = 7;

    bool isSilent() const { return previousInput == 0 && highpass == 0; }
    bool operator==(const DcBlock&) const = default;
  };

  DcBlock left;
  DcBlock right;
  std::int32_t peak = 0;
  std::int32_t envelope = 0;
  std::int32_t gain = 0;  ///< Q15.

  std::int32_t rise = 0;  ///< Increase of the gain per sample.

  /// Sets the rise for a sensitivity in Q15: a higher sensitivity gives a lower gain. The only division.
  void setSens(std::int32_t sens) {
    constexpr std::int32_t kRiseAtFullSens = 16;
    rise = kOneQ15 / std::max(sens, 1) * kRiseAtFullSens;
  }

  /// Updates the gain (0 to 32767) for a sample whose louder channel has this magnitude after the DC blocks. `attack`
  /// is the envelope's smoothing per sample, Q15.
  void follow(std::int32_t louder, std::int32_t attack) {
    using namespace cofu::core;
    constexpr std::int32_t kPeakKept = 32674;  // Q15: 0.9971 per sample, a time constant of 348 samples (8 ms).
    constexpr std::int32_t kEnvelopeTop = 2147483647;
    peak = std::max(louder, (peak >> 15) * kPeakKept);
    envelope += ((peak >> 15) - (envelope >> 15)) * attack;
    gain = std::min(mul15((kEnvelopeTop - envelope) >> 16, gain) + rise, kFullScale);
  }

  /// Whether both channels are silent. Envelope and gain may still move.
  bool isSilent() const { return left.isSilent() && right.isSilent(); }

  /// Advances by `count` samples of silence after silence.
  void skip(unsigned count, std::int32_t attack) {
    moveToRest(*this, count, [attack](CompressorGain& moved) { moved.follow(0, attack); });
  }

  bool operator==(const CompressorGain&) const = default;
};

/// Common to both compressors: the sensitivity is smoothed, the attack changes at once.
struct CompressorParts {
  struct Settings {
    std::int32_t sens;    ///< Q15.
    std::int32_t attack;  ///< Q15 share per sample.
  };

  void aim(const Settings& to, bool) { attack = to.attack; }
  static bool fitsLanes(const Settings&) { return true; }

  bool isSilent(unsigned) const { return law.isSilent(); }
  void skip(const Settings& to, unsigned count) { law.skip(count, to.attack); }

  void eachSmoothed(const Settings& to, auto&& visit) { visit(sens, to.sens); }
  void derive() { law.setSens(sens.value()); }

  SmoothedValue sens;
  std::int32_t attack = 0;  ///< For the lanes.
  CompressorGain law;
};

struct CompressorLaw : CompressorParts {
  static constexpr LawParts kParts{
      .start = Knobs{}, .aims = true, .glides = true, .derives = true, .lanes = LaneParts::avx2, .sleepsAfter = 0};

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Starts from silence: gain and sensitivity rise from 0.
  void reset(const Settings&) { *this = {}; }
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
  static const RunInLanes<CompressorLaw> runAvx2;
};

extern template class TwoKnobEffect<CompressorLaw>;

/// Edit1 is the sensitivity, Edit2 the attack.
class SivrayFxCompressor : public TwoKnobEffect<CompressorLaw> {};

struct SivrayFxStereoCompressor {
  /// Edit1 is the sensitivity, Edit2 the attack.
  struct StereoCompressorImpl : CompressorParts {
    static constexpr LawParts kParts{.start = Knobs{50, 0},
                                     .resetTakesPending = true,
                                     .aims = true,
                                     .glides = true,
                                     .derives = true,
                                     .lanes = LaneParts::avx2,
                                     .sleepsAfter = 0};

    static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

    /// Starts from silence. The DC blocks keep their outputs.
    void reset(const Settings&) SIVRAY_NONBLOCKING;
    void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;
    static const RunInLanes<StereoCompressorImpl> runAvx2;
  };
};

extern template class TwoKnobEffect<SivrayFxStereoCompressor::StereoCompressorImpl>;

}  // namespace tesh::bramel::plugin::sivray::effects
