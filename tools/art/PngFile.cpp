// Encodes pictures through libpng.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PngFile.h"

#include <png.h>

#include <memory>
#include <stdexcept>

namespace sivray::art {
namespace {

constexpr int kBestCompression = 9;
constexpr int kMostMemory = 9;

[[noreturn]] void fail(png_structp, png_const_charp message) { throw std::runtime_error(message); }
void ignore(png_structp, png_const_charp) {}

void append(png_structp writer, png_bytep data, png_size_t size) {
  auto& bytes = *static_cast<std::vector<std::uint8_t>*>(png_get_io_ptr(writer));
  bytes.insert(bytes.end(), data, data + size);
}

void flush(png_structp) {}

std::vector<std::uint8_t> row(const juce::Image& image, int y, bool opaque) {
  std::vector<std::uint8_t> channels;
  for (int x = 0; x < image.getWidth(); ++x) {
    const juce::Colour pixel = image.getPixelAt(x, y);
    channels.insert(channels.end(), {pixel.getRed(), pixel.getGreen(), pixel.getBlue()});
    if (!opaque) {
      channels.push_back(pixel.getAlpha());
    }
  }
  return channels;
}

std::vector<std::uint8_t> encode(const juce::Image& image, int filters) {
  std::vector<std::uint8_t> bytes;
  png_structp writer = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore);
  png_infop info = png_create_info_struct(writer);
  const bool opaque = isOpaque(image);
  png_set_write_fn(writer, &bytes, append, flush);
  png_set_compression_level(writer, kBestCompression);
  png_set_compression_mem_level(writer, kMostMemory);
  png_set_filter(writer, PNG_FILTER_TYPE_BASE, filters);
  png_set_IHDR(writer, info, static_cast<png_uint_32>(image.getWidth()), static_cast<png_uint_32>(image.getHeight()), 8,
               opaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_write_info(writer, info);
  for (int y = 0; y < image.getHeight(); ++y) {
    png_write_row(writer, row(image, y, opaque).data());
  }
  png_write_end(writer, nullptr);
  png_destroy_write_struct(&writer, &info);
  return bytes;
}

}  // namespace

bool isOpaque(const juce::Image& image) {
  for (int y = 0; y < image.getHeight(); ++y) {
    for (int x = 0; x < image.getWidth(); ++x) {
      if (image.getPixelAt(x, y).getAlpha() != 0xff) {
        return false;
      }
    }
  }
  return true;
}

std::vector<std::uint8_t> pngBytes(const juce::Image& image) {
  // PNG filters help smooth ramps, but hide repeated stretches of a row from the compressor.
  std::vector<std::uint8_t> plain = encode(image, PNG_FILTER_NONE);
  std::vector<std::uint8_t> filtered = encode(image, PNG_ALL_FILTERS);
  return plain.size() < filtered.size() ? plain : filtered;
}

}  // namespace sivray::art
