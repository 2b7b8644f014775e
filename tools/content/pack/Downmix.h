// Brings sound of more than two channels to left and right.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

namespace sivray::content {

using Channel = std::vector<float>;

/// Where a channel belongs, as far as it matters for two sides.
enum class Speaker { left, right, centre, low, leftSide, rightSide };

/// The most channels whose places are known without a map.
inline constexpr std::size_t kMostMixedChannels = 8;

/// Returns left and right of 3 to 8 channels. Without a place for each in `speakers` they have the usual order of WAV
/// files. The centre, sides and rear count 3 dB less, what only
/// moves the air (LFE) is left out, and the whole is turned down if it would not fit.
std::vector<Channel> mixedDown(const std::vector<Channel>& channels, const std::vector<Speaker>& speakers);

}  // namespace sivray::content
