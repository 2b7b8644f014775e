// Resources that a test provides for a store of fonts and images.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/Scratch.h"
#include "viewmodels/resources/ResourceStore.h"

namespace support {

/// Resources by name in upper case. Must outlive the lookups that it returns.
class NotedResources {
 public:
  using Bytes = std::vector<std::uint8_t>;

  void add(const std::string& type, const std::string& name, Bytes bytes) {
    held[type + " " + name] = std::move(bytes);
  }

  tesh::bramel::ResourceStore::Lookup lookup() {
    return [this](std::string_view type, std::string_view name) -> std::span<const std::uint8_t> {
      asked.push_back(std::string(type) + " " + std::string(name));
      const auto found = held.find(juce::String(asked.back()).toUpperCase().toStdString());
      return found == held.end() ? std::span<const std::uint8_t>{} : found->second;
    };
  }

  /// Returns a PNG of this size.
  static Bytes png(int width, int height) {
    juce::Image image(juce::Image::ARGB, width, height, true);
    for (int pixel = 0; pixel < width * height; ++pixel) {  // All different, and most of them translucent.
      const auto shade = static_cast<std::uint8_t>(pixel);
      image.setPixelAt(pixel % width, pixel / width, juce::Colour(shade, std::uint8_t{200}, std::uint8_t{90}, shade));
    }
    juce::MemoryOutputStream stream;
    juce::PNGImageFormat().writeImageToStream(image, stream);
    const auto* const data = static_cast<const std::uint8_t*>(stream.getData());
    return {data, data + stream.getDataSize()};
  }

  /// Returns the bytes of a font file of the repository.
  static Bytes face(const std::string& file) { return bytesIn(std::filesystem::path(SIVRAY_FONTS_FOLDER) / file); }

  std::vector<std::string> asked;  ///< Every request, for example "TTF Oswald_Medium".

 private:
  std::map<std::string, Bytes> held;
};

}  // namespace support
