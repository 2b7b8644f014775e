// Mixes sound of more than two channels down to left and right.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

namespace sivray::content {

using Channel = std::vector<float>;

/// The speaker position of a channel, as far as it matters for the mix.
enum class Speaker { left, right, centre, low, leftSide, rightSide };

/// The greatest number of channels whose positions are known without a channel map.
inline constexpr std::size_t kMostMixedChannels = 8;

/// Returns left and right of 3 to 8 channels. If `speakers` is empty, the channels have the usual order of WAV files.
/// Centre, side and rear channels count 3 dB less, the low-frequency channel (LFE) is left out, and the result is
/// scaled down if it would exceed full scale.
std::vector<Channel> mixedDown(const std::vector<Channel>& channels, const std::vector<Speaker>& speakers);

}  // namespace sivray::content
