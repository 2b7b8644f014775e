// Determines the browser's category from names that people give to folders and files.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

namespace sivray::content {

struct CategoryMatch {
  int category = 0;     ///< Index into kCategoryNames.
  bool isSure = false;  ///< False for a hat that is called neither open nor closed, which counts as closed.
};

/// Recognises "Kicks", "bd_03", "HH closed", "OpenHat" and similar names; UTF-8, in any case. Nothing if no word is
/// known.
std::optional<CategoryMatch> categoryIn(std::string_view name);

}  // namespace sivray::content
