// "EQ": a high and a low shelf in single precision.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a high shelf (a gain into a pole, then a second pole) followed by a low shelf (a zero and a pole). All six
/// coefficients are smoothed by one-pole smoothers.
struct EqualizerLaw {
  static constexpr LawParts kParts{.glides = true, .sleepsAfter = 0};

  /// The coefficients of a first-order shelf: for the previous sample, for the current one, and the pole.
  struct Shelf {
    float before = 0.0F;
    float now = 0.0F;
    float pole = 0.0F;

    bool operator==(const Shelf&) const = default;
  };

  struct Settings {
    Shelf low;
    Shelf high;

    bool operator==(const Settings&) const = default;
  };

  /// Left and right side by side; the other two lanes are always 0.
  using StereoFloats = cofu::registers::Registers128::Floats;

  /// The last values after the first pole, after the high shelf and after the low shelf.
  struct Memory {
    StereoFloats a{};
    StereoFloats b{};
    StereoFloats c{};
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Sets the smoothed coefficients to their targets; the filter's state stays.
  void reset(const Settings& now) { smoothed = now; }
  bool restsAt(const Settings& to, bool immediate) const { return glided(to, immediate) == smoothed; }
  void glide(const Settings& to, bool immediate) { smoothed = glided(to, immediate); }
  void step(const Settings&, std::int16_t& leftSample, std::int16_t& rightSample) SIVRAY_NONBLOCKING;

  /// Whether silent input gives silent output and changes nothing. Rounding may hold the state next to 0.
  bool isSilent(unsigned) const SIVRAY_NONBLOCKING;
  void skip(const Settings&, unsigned) {}

  Settings smoothed;
  Memory memory;

 private:
  Settings glided(const Settings& to, bool immediate) const SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<EqualizerLaw>;

/// Edit1 is the low gain, Edit2 the high gain. Knob values of 62 to 66 change nothing.
class SivrayFxEqualizer : public TwoKnobEffect<EqualizerLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
