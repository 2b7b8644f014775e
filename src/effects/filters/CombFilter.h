// "Comb Filter": a short line with feedback on each channel.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/RealTime.h"
#include "effects/interfaces/AtomicWord.h"
#include "effects/interfaces/StereoBlock.h"

namespace tesh::bramel::plugin::sivray::effects {

/// The core of "Comb Filter": Edit1 is the pitch of the delay in semitones above 32.7 Hz, Edit2 the feedback, by which
/// the sound decays in the same time at every pitch.
class CombFilter {
 public:
  CombFilter();

  void process(StereoBlock& block, unsigned count) SIVRAY_NONBLOCKING;

  /// Index 0 delay, 1 feedback; the value is masked to 7 bits and given back. Other indices give 0. Any thread.
  int setEdit(unsigned index, int value) SIVRAY_NONBLOCKING;

  /// Silences the feedback; what stands in the lines stays.
  void reset() SIVRAY_NONBLOCKING;

 private:
  static constexpr std::size_t kLineLength = 2048;

  struct Channel {
    std::array<std::int32_t, kLineLength> line{};
    std::int32_t output = 0;  ///< Delayed sample, 30 fractional bits.
  };

  void updateTargets();
  bool glide();
  void render(StereoBlock block, unsigned start, unsigned end);

  Relaxed<int> delayKnob{64};
  Relaxed<int> feedbackKnob{64};
  Relaxed<std::int32_t> delayTarget;     ///< Samples, 15 fractional bits.
  Relaxed<std::int32_t> feedbackTarget;  ///< 31 fractional bits.
  std::int64_t delayState = 0;
  std::int64_t feedbackState = 0;
  std::int32_t eta = 0;  ///< Weight of the interpolation at the present delay, Q15.
  unsigned write = 0;
  unsigned read = 0;
  Channel left;
  Channel right;
};

}  // namespace tesh::bramel::plugin::sivray::effects
