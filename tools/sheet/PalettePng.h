// PNG files with a palette, about a fifth of the size in true colours.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <span>
#include <vector>

namespace sivray {

/// Returns the bytes of a PNG file of the image, with each pixel in the nearest of these 1 to 256 colours. Throws
/// std::runtime_error if libpng fails.
std::vector<std::uint8_t> palettePngOf(const juce::Image& image, std::span<const juce::Colour> colours);

}  // namespace sivray
