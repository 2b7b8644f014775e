// PNG files of few colours: a fifth of the size that the same picture has in true colours.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <span>
#include <vector>

namespace sivray {

/// Returns the bytes of a PNG file of the image, each pixel in the nearest of these colours, 1 to 256. Throws
/// std::runtime_error if the picture cannot be made.
std::vector<std::uint8_t> palettePngOf(const juce::Image& image, std::span<const juce::Colour> colours);

}  // namespace sivray
