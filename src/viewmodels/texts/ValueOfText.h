// Finds the value of a parameter by a text, as a user types it into a host's field.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tesh::bramel::tooltip {

/// The normalised value of parameter `index` whose text is `text`, ignoring case; else the value whose text shows the
/// number nearest to that in `text`. Nothing if there is neither. Any thread but the audio thread.
std::optional<float> valueOfText(std::uint64_t index, std::string_view text);

}  // namespace tesh::bramel::tooltip
