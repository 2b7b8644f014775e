// Brings sound to another sample rate.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

namespace sivray::content {

enum class RateQuality { fast, best };

/// Returns one channel at `ratio` times its rate, at least one sample, for a ratio of 1/256 to 256 and at least one
/// sample. What the new rate cannot hold is left out.
std::vector<float> atRate(std::span<const float> channel, double ratio, RateQuality quality);

}  // namespace sivray::content
