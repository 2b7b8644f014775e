// Balances the levels of a kit: a groove of its style becomes as loud as those of all kits, and each pad in it gets the
// loudness of its role.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "content/factory/Kit.h"
#include "content/levels/KitMeter.h"

namespace sivray::content {

/// The range of a pad's peak at a full hit, in dB of full scale.
inline constexpr double kLowestPeak = -24.0;
inline constexpr double kHighestPeak = -5.5;

/// Velocity of a full hit, and the time that it is measured for.
inline constexpr int kFullVelocity = 127;
inline constexpr double kListenSeconds = 12.0;

double decibelsOf(double factor);

/// Returns the levels, 1 to 127, that give each pad of the meter's selected program the loudness of its role; `kit`
/// must be that program. A pad that cannot reach it gets the nearest level.
std::array<int, factory::kPads> balancedLevels(KitMeter& meter, const factory::Kit& kit);

/// Returns the kit's text with these levels in the lines of its pads.
std::string withLevels(const std::string& text, const factory::Kit& kit, const std::array<int, factory::kPads>& levels);

}  // namespace sivray::content
