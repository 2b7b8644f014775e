// "Decimator": a sample-and-hold at a lower rate, without a filter.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Edit1 is the rate (44100 down to 1000 Hz), Edit2 the balance. Nothing is smoothed.
struct SivrayFxDecimator {
  static constexpr LawParts kParts{.start = Knobs{64, kTopKnob}, .aims = true, .sleepsAfter = 0};

  struct Settings {
    std::uint32_t step;  ///< Increment per sample of a 16-bit counter.
    std::int32_t wet;    ///< Q15.
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;
  void reset(const Settings& now) {
    *this = {};
    aim(now, false);
  }
  void aim(const Settings& to, bool immediate) SIVRAY_NONBLOCKING;
  void step(const Settings& to, std::int16_t& left, std::int16_t& right) SIVRAY_NONBLOCKING;

  bool isSilent(unsigned) const { return (holdLeft | holdRight | wetLeft | wetRight) == 0; }
  void skip(const Settings& to, unsigned count) { counter = (counter + to.step * count) & 65535; }

  std::uint32_t counter = 0;
  std::int32_t holdLeft = 0;
  std::int32_t holdRight = 0;
  std::int32_t wetLeft = 0;  ///< The held sample times the balance.
  std::int32_t wetRight = 0;
};

extern template class TwoKnobEffect<SivrayFxDecimator>;

}  // namespace tesh::bramel::plugin::sivray::effects
