// Decodes fonts and images.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/resources/ResourceStore.h"

#include <juce_graphics/juce_graphics.h>

#include <algorithm>

namespace tesh::bramel {
namespace {

using cofu::core::boxed::Box;
using cofu::core::boxed::copyOf;
using cofu::core::boxed::makeBox;
using cofu::core::boxed::valueIn;

std::string resourceName(std::string name) {
  std::ranges::replace(name, ' ', '_');
  return name;
}

juce::Image decode(std::span<const std::uint8_t> png) {
  return png.empty() ? juce::Image() : juce::ImageFileFormat::loadFrom(png.data(), png.size());
}

// "KNOB" of "KNOB_5"; empty if the name does not end in a number.
std::string baseOfFrame(const std::string& name) {
  const auto end = name.find_last_not_of("0123456789");
  return end == std::string::npos || end + 1 == name.size() || name[end] != '_' ? "" : name.substr(0, end);
}

// Copies the square of `side` pixels at `left` row by row, because painting it would touch every pixel.
juce::Image frameAt(const juce::Image& strip, int left, int side) {
  juce::Image frame(strip.getFormat(), side, side, false);
  const juce::Image::BitmapData from(strip, left, 0, side, side);
  const juce::Image::BitmapData to(frame, juce::Image::BitmapData::writeOnly);
  for (int row = 0; row < side; ++row) {
    std::copy_n(from.getLinePointer(row), side * from.pixelStride, to.getLinePointer(row));
  }
  return frame;
}

}  // namespace

void ResourceStore::addFont(const std::string& name) {
  if (fonts.contains(name)) {
    return;
  }
  auto bytes = lookup("TTF", resourceName(name));
  if (bytes.empty()) {
    bytes = lookup("OTF", resourceName(name));
  }
  if (!bytes.empty()) {
    auto face = juce::Typeface::createSystemTypefaceFor(bytes.data(), bytes.size());
    fonts[name] = makeBox(juce::Font(withFallback(std::move(face), bytes, installed)));
  }
}

Box ResourceStore::getFont(const std::string& name, double height) const {
  const auto found = fonts.find(name);
  const juce::Font face = found == fonts.end() ? juce::Font() : *valueIn<juce::Font>(found->second);
  return makeBox(face.withHeight(static_cast<float>(height)));
}

// Copies each frame out of its strip: a frame whose rows are contiguous is painted faster. Decodes no strip twice,
// whatever frame is asked for.
void ResourceStore::addFramesOf(const std::string& base, const std::string& set) {
  if (images.contains(base + "_0" + set)) {
    return;
  }
  const auto numbered = [&set](const std::string& name, int number) {
    return name + "_" + std::to_string(number) + set;
  };
  int frame = 0;
  for (int number = 0;; ++number) {
    const juce::Image strip = decode(lookup("PNG", numbered(base + "_STRIP", number)));
    if (strip.isNull()) {
      return;
    }
    const int side = strip.getHeight();
    for (int left = 0; left + side <= strip.getWidth(); left += side) {
      images[numbered(base, frame++)] = makeBox(frameAt(strip, left, side));
    }
  }
}

Box ResourceStore::getImage(const std::string& name, int scale) {
  const std::string resource = resourceName(name);
  const std::string set = scale > 1 ? "_2X" : "";
  const std::string key = resource + set;
  if (!images.contains(key)) {
    if (const juce::Image image = decode(lookup("PNG", key)); image.isValid()) {
      images[key] = makeBox(image);
    } else if (const std::string base = baseOfFrame(resource); !base.empty()) {
      addFramesOf(base, set);
    }
  }
  const auto found = images.find(key);
  return found == images.end() ? nullptr : copyOf(found->second);
}

}  // namespace tesh::bramel
