// The MIDI controllers of the factory map: rows of eight, one controller per pad, and single controllers for the rest.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "content/factory/MacroLayout.h"

namespace sivray::factory {

/// A macro that every pad has: pad 0's controller number (the other pads follow), and the macro.
struct ControllerRow {
  int first;
  PadMacro macro;
};

/// Keyboards and pad controllers offer these numbers on rows of eight, and no other message of a drum part uses them.
inline constexpr std::array<ControllerRow, 5> kControllerRows{{
    {20, kLevel},         // Undefined numbers: the first row of knobs or faders on most boxes.
    {70, kEnvelopeTime},  // Sound controllers, the release and decay times among them.
    {80, kEffectSend},    // General-purpose switches.
    {102, kPitch},        // Undefined numbers.
    {110, kPan},
}};

struct ControllerPlace {
  int controller;
  std::size_t macro;
};

inline constexpr std::array<ControllerPlace, 8> kControllerPlaces{{
    {1, kEffectEdit1Macro},   // Modulation wheel.
    {7, kMasterLevelMacro},   // Volume.
    {11, kMasterLevelMacro},  // Expression pedal.
    {12, kEffectEdit1Macro},  // Effect control 1 and 2.
    {13, kEffectEdit2Macro},
    {14, kEffectTypeMacro},
    {91, kEffectEdit2Macro},  // Effect depth.
    {92, kEffectSwitchMacro},
}};

/// The pad whose pitch follows the bend wheel: the tom. Factory kits leave its pitch at the middle, which is the
/// wheel's value at rest.
inline constexpr std::size_t kBentPad = 5;

}  // namespace sivray::factory
