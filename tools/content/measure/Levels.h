// The level of a signal over time, and figures derived from it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

namespace sivray::content {

/// Returns for each sample the mean power of the `milliseconds` around it.
std::vector<float> powerCourse(std::span<const float> samples, double milliseconds);

/// Returns the milliseconds from the course's highest point to the last one that is no more than `decibels` below it.
double fallTime(std::span<const float> course, double decibels);

/// Returns the milliseconds that the course takes from 10 to 90 % of its highest amplitude, up to its first 90 %.
double attackTime(std::span<const float> course);

/// Returns the mean power between two times, in milliseconds; 0 after the end.
double meanPower(std::span<const float> samples, double from, double to);

/// Returns a filtered copy, whose level falls by 24 dB an octave below `lowHertz` and above `highHertz`. Below about
/// -90 dB the result holds rounding errors only.
std::vector<float> bandOf(std::span<const float> samples, double lowHertz, double highHertz);

/// Returns the roughness of a level in dB: how much the levels of steps of 10 ms, from 20 to 200 ms, differ from the
/// line between their neighbours.
double rippleOf(std::span<const float> samples);

/// Returns how often the level of 1 ms rises by 3 dB or more between 4 and 30 ms.
double echoesOf(std::span<const float> samples);

}  // namespace sivray::content
