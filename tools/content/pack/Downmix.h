// Brings sound of more than two channels to left and right.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

namespace sivray::content {

using Channel = std::vector<float>;

/// The most channels whose places are known without a map.
inline constexpr std::size_t kMostMixedChannels = 8;

/// Returns left and right of 3 to 8 channels. `speakers` gives the place of each as libsndfile's SF_CHANNEL_MAP_...;
/// one of another size stands for the usual order of WAV files. The centre, sides and rear count 3 dB less, what only
/// moves the air (LFE) is left out, and the whole is turned down if it would not fit.
std::vector<Channel> mixedDown(const std::vector<Channel>& channels, const std::vector<int>& speakers);

}  // namespace sivray::content
