// Pictures as PNG bytes: small, and the same in every run.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <vector>

namespace sivray::art {

/// True if every pixel of `image` has full alpha.
bool isOpaque(const juce::Image& image);

/// Without transparency the file holds three channels, else four. Throws std::runtime_error if it cannot be written.
std::vector<std::uint8_t> pngBytes(const juce::Image& image);

}  // namespace sivray::art
