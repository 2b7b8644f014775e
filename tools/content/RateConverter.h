// Converts sound to another sample rate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

namespace sivray::content {

enum class RateQuality { fast, best };

/// Returns one channel at `ratio` (1/256 to 256) times its rate; at least one sample, from at least one sample. Removes
/// frequencies that the new rate cannot hold.
std::vector<float> atRate(std::span<const float> channel, double ratio, RateQuality quality);

}  // namespace sivray::content
