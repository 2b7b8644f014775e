// Texts as a terminal is given them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace sivray {

/// Returns UTF-8 text with a "?" in place of each control character, which could move the cursor or colour what
/// follows.
std::string printable(std::string_view text);

/// Returns the number and its noun: "1 file", "2 files".
std::string counted(std::size_t count, const char* one, const char* several);

}  // namespace sivray
