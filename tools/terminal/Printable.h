// Texts from outside, file names above all, as a terminal may be given them.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace sivray {

/// Returns UTF-8 text with a "?" in place of each control character, which could move the cursor or colour what
/// follows.
std::string printable(std::string_view text);

}  // namespace sivray
