// Numbers as text of at most eight characters, as hosts expect them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tesh::bramel::vst {

/// Eight characters with a decimal point, or eight digits without one; further digits are cut off, not rounded. "Huge!"
/// for a number that does not fit, and for NaN.
std::string floatText(double value);

/// "Huge!" for a number that does not fit.
std::string integerText(std::int32_t value);

/// A linear level in decibels; "-oo" for 0 and less, and for NaN.
std::string levelText(float level);

/// Copies as much of `text` as fits into `capacity` bytes with a terminating zero. Ignores a null destination.
void copyText(char* destination, std::string_view text, std::size_t capacity);

}  // namespace tesh::bramel::vst
