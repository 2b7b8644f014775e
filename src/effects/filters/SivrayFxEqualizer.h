// "EQ": a high and a low shelf in single precision.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "effects/interfaces/TwoKnobEffect.h"
#include "registers/Registers128.h"

namespace tesh::bramel::plugin::sivray::effects {

/// Models a high shelf (a gain into a pole, then a second pole) before a low shelf (a zero and a pole). The glide of
/// the six coefficients is their one-pole smoothing.
struct EqualizerLaw {
  static constexpr LawParts kParts{.glides = true, .sleepsAfter = 0};

  /// The coefficients of a first-order shelf: for the sample before, for the present one, and the pole.
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

  /// Left and right side by side; the other two lanes stay 0.
  using StereoFloats = cofu::registers::Registers128::Floats;

  /// The last values behind the first pole, the high shelf and the low shelf.
  struct Memory {
    StereoFloats a{};
    StereoFloats b{};
    StereoFloats c{};
  };

  static Settings settingsOf(const Knobs& knobs) SIVRAY_NONBLOCKING;

  /// Puts the smoothed coefficients on their targets; the filter memory stays.
  void reset(const Settings& now) { smoothed = now; }
  bool restsAt(const Settings& to, bool immediate) const { return glided(to, immediate) == smoothed; }
  void glide(const Settings& to, bool immediate) { smoothed = glided(to, immediate); }
  void step(const Settings&, std::int16_t& leftSample, std::int16_t& rightSample) SIVRAY_NONBLOCKING;

  /// Whether silence gives silence and changes nothing: rounding may hold the memory next to 0.
  bool isSilent(unsigned) const SIVRAY_NONBLOCKING;
  void skip(const Settings&, unsigned) {}

  Settings smoothed;
  Memory memory;

 private:
  Settings glided(const Settings& to, bool immediate) const SIVRAY_NONBLOCKING;
};

extern template class TwoKnobEffect<EqualizerLaw>;

/// Edit1 is the low gain, Edit2 the high gain; both change nothing at 62 to 66.
class SivrayFxEqualizer : public TwoKnobEffect<EqualizerLaw> {};

}  // namespace tesh::bramel::plugin::sivray::effects
