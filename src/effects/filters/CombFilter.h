// "Comb Filter": a short delay line with feedback on each channel.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the pitch of the delay in semitones above 32.7 Hz, Edit2 the feedback. Models a plucked string: the
/// feedback grows as the delay gets shorter, so that a sound decays in the same time at every pitch. There is no
/// immediate mode.
struct CombFilter {
  static constexpr unsigned kLineLength = 2048;

  static constexpr LawParts kParts{
      .start = Knobs{64, 64}, .glides = true, .derives = true, .lanes = LaneParts::avx2, .sleepsAfter = kLineLength};

  /// Samples that lanes compute at once.
  static constexpr unsigned kLanes = 8;

  /// Limit of the delayed sample: 30 bits.
  static constexpr std::int32_t kOutputLimit = 1073741823;

  struct Settings {
    std::int32_t delay;     ///< Samples, 15 fractional bits.
    std::int32_t feedback;  ///< 31 fractional bits.
  };

  // All members except the lines are 64 bits wide, so that the compiler knows that storing a sample in a line changes
  // none of them.
  struct Channel {
    std::array<std::int32_t, kLineLength> line{};  ///< Samples, 15 fractional bits.
    std::int64_t output = 0;                       ///< The delayed sample, 15 fractional bits.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Silences the feedback; the lines keep their sound.
  void reset(const Settings&) {
    left.output = 0;
    right.output = 0;
  }
  bool restsAt(const Settings& to, bool immediate) const SIVRAY_NONBLOCKING;
  void glide(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;
  void derive() SIVRAY_NONBLOCKING;
  void step(const Settings&, std::int16_t& leftSample, std::int16_t& rightSample) SIVRAY_NONBLOCKING;
  bool fitsLanes(const Settings&) const { return wholeDelay >= kLanes; }
  static const RunInLanes<CombFilter> runAvx2;

  bool isSilent(unsigned count) const {
    return left.output == 0 && right.output == 0 && isZeroBefore(left.line.data(), kLineLength, write, count) &&
           isZeroBefore(right.line.data(), kLineLength, write, count);
  }
  void skip(const Settings&, unsigned count) { moveIndices(count); }
  void moveIndices(std::size_t count) {
    write = (write + count) & (kLineLength - 1);
    read = (write - wholeDelay) & (kLineLength - 1);
  }

  std::int64_t delay = 0;
  std::int64_t feedback = 0;
  std::size_t wholeDelay = 0;  ///< Samples.
  std::int64_t eta = 0;        ///< Weight of the interpolation at the present delay, Q15.
  std::size_t write = 0;
  std::size_t read = 0;
  Channel left;
  Channel right;

 private:
  void stepChannel(Channel& channel, std::int16_t& sample) const;
};

extern template class TwoKnobEffect<CombFilter>;

}  // namespace tesh::bramel::plugin::sivray::effects
