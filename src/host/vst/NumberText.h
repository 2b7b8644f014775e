// Numbers as text of at most eight characters, the way hosts have always shown them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tesh::bramel::vst {

/// A point, and as many decimals as make eight characters, cut and not rounded. "Huge!" for what does not fit.
std::string floatText(double value);

/// "Huge!" for what does not fit.
std::string integerText(std::int32_t value);

/// A linear level in decibels; "-oo" from 0 down.
std::string levelText(float level);

/// Copies as much of `text` as `capacity` bytes hold and ends it with a zero. Nothing happens to a null destination.
void copyText(char* destination, std::string_view text, std::size_t capacity);

}  // namespace tesh::bramel::vst
