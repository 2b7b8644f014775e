// One channel of sound, and sounds of one or two channels, at 44100 Hz.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

namespace sivray::content {

using Signal = std::vector<double>;

/// One channel for mono, two of equal length for stereo. Full scale is ±1.
using Sound = std::vector<Signal>;

}  // namespace sivray::content
