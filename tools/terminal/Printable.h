// Formats text for a terminal.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace sivray {

/// Returns UTF-8 text with each control character replaced by "?", since these can move the cursor or change colours.
std::string printable(std::string_view text);

/// Returns the number and its noun, for example "1 file" or "2 files".
std::string counted(std::size_t count, const char* one, const char* several);

}  // namespace sivray
