// Brings the pads of a kit to the levels of their roles: as loud as each role asks for, with peaks inside one window
// for all pads of all kits, so that stepping through the programs never startles.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "content/factory/Kit.h"
#include "content/levels/KitMeter.h"

namespace sivray::content {

/// Peaks of a full hit on any pad of any kit, in decibels below full scale.
inline constexpr double kLowestPeak = -11.4;
inline constexpr double kHighestPeak = -6.8;

/// Velocity of a full hit, and how long it is listened to.
inline constexpr int kFullVelocity = 127;
inline constexpr double kListenSeconds = 12.0;

double decibelsOf(double factor);

/// The levels, 1 to 127, that bring each pad of the meter's selected program to where it should be; `kit` is that
/// program. A pad that cannot reach its place gets the nearest level.
std::array<int, factory::kPads> balancedLevels(KitMeter& meter, const factory::Kit& kit);

/// The text of a kit with these levels in its pads' lines.
std::string withLevels(const std::string& text, const factory::Kit& kit, const std::array<int, factory::kPads>& levels);

}  // namespace sivray::content
