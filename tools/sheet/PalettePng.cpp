// Maps pixels to the nearest colours; libpng writes the file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheet/PalettePng.h"

#include <png.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace sivray {
namespace {

int distanceOf(juce::Colour a, juce::Colour b) {
  const auto square = [](int x) { return x * x; };
  return square(a.getRed() - b.getRed()) + square(a.getGreen() - b.getGreen()) + square(a.getBlue() - b.getBlue());
}

std::uint8_t nearestOf(juce::Colour colour, std::span<const juce::Colour> colours) {
  const auto nearest =
      std::ranges::min_element(colours, {}, [&](juce::Colour other) { return distanceOf(colour, other); });
  return static_cast<std::uint8_t>(nearest - colours.begin());
}

}  // namespace

std::vector<std::uint8_t> palettePngOf(const juce::Image& image, std::span<const juce::Colour> colours) {
  std::vector<std::uint8_t> pixels;
  std::map<std::uint32_t, std::uint8_t> known;  // Cache, since spectrograms repeat a few colours.
  for (int y = 0; y < image.getHeight(); ++y) {
    for (int x = 0; x < image.getWidth(); ++x) {
      const juce::Colour colour = image.getPixelAt(x, y);
      const auto [entry, isNew] = known.try_emplace(colour.getARGB());
      if (isNew) {
        entry->second = nearestOf(colour, colours);
      }
      pixels.push_back(entry->second);
    }
  }
  std::vector<std::uint8_t> map;
  for (const juce::Colour colour : colours) {
    map.insert(map.end(), {colour.getRed(), colour.getGreen(), colour.getBlue()});
  }
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  header.width = static_cast<png_uint_32>(image.getWidth());
  header.height = static_cast<png_uint_32>(image.getHeight());
  header.format = PNG_FORMAT_RGB_COLORMAP;
  header.colormap_entries = static_cast<png_uint_32>(colours.size());
  std::vector<std::uint8_t> file(PNG_IMAGE_PNG_SIZE_MAX(header));
  png_alloc_size_t size = file.size();
  if (png_image_write_to_memory(&header, file.data(), &size, 0, pixels.data(), 0, map.data()) == 0) {
    throw std::runtime_error(header.message);
  }
  file.resize(size);
  return file;
}

}  // namespace sivray
