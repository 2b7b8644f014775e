// "Distortion": a mono highpass, a high gain, a wave folder, and a cut around 8 kHz.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the gain, Edit2 the level. The output is mono.
struct Q60393Distortion {
  static constexpr LawParts kParts{.start = Knobs{64, 73}, .glides = true, .sleepsAfter = 0};

  /// Q15.
  struct Settings {
    std::int32_t gain;
    std::int32_t level;
  };

  /// The last two samples of the input and of the outputs of the two filters.
  struct Memory {
    std::int64_t highpassIn = 0;
    std::int64_t highpassOut = 0;
    std::int64_t in1 = 0;
    std::int64_t in2 = 0;
    std::int64_t out1 = 0;
    std::int64_t out2 = 0;

    bool operator==(const Memory&) const = default;
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings&) { memory = {}; }
  void step(const Settings&, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  /// Whether silent input gives silent output and changes nothing. Rounding may hold the filters' state next to 0.
  bool isSilent(unsigned) const SIVRAY_NONBLOCKING;
  void skip(const Settings&, unsigned) {}

  void eachSmoothed(const Settings& to, auto&& visit) {
    visit(gain, to.gain);
    visit(level, to.level);
  }

  SmoothedValue gain;
  SmoothedValue level;
  Memory memory;
};

extern template class TwoKnobEffect<Q60393Distortion>;

}  // namespace tesh::bramel::plugin::sivray::effects
