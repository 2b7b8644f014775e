// MIDI controllers of the factory's map: rows of eight for what every pad has, and single ones for the rest.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

#include "content/factory/MacroLayout.h"

namespace sivray::factory {

/// One value of all pads: the first pad's controller, and the value.
struct ControllerRow {
  int first;
  PadMacro macro;
};

/// Numbers that keyboards and pad boxes offer on rows of eight and that no other message of a drum part uses.
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

/// The pad whose pitch follows the bend wheel: a drum that a hand bends. At rest the wheel stands in the middle, where
/// factory kits leave this pad.
inline constexpr std::size_t kBentPad = 5;

}  // namespace sivray::factory
