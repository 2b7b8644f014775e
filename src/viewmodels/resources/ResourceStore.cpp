// Decoding of fonts and images.
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
    fonts[name] = makeBox(juce::Font(juce::Typeface::createSystemTypefaceFor(bytes.data(), bytes.size())));
  }
}

Box ResourceStore::getFont(const std::string& name, double height) const {
  const auto found = fonts.find(name);
  const juce::Font face = found == fonts.end() ? juce::Font() : *valueIn<juce::Font>(found->second);
  return makeBox(face.withHeight(static_cast<float>(height)));
}

Box ResourceStore::getImage(const std::string& name, int scale) {
  const std::string key = resourceName(name) + (scale > 1 ? "_2X" : "");
  if (const auto found = images.find(key); found != images.end()) {
    return copyOf(found->second);
  }
  const auto bytes = lookup("PNG", key);
  const juce::Image image = bytes.empty() ? juce::Image() : juce::ImageFileFormat::loadFrom(bytes.data(), bytes.size());
  if (image.isNull()) {
    return nullptr;
  }
  return copyOf(images[key] = makeBox(image));
}

}  // namespace tesh::bramel
