// Unboxes the providers' images and fonts; also the sets of images that controls share.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "viewmodels/resources/IBramelImageProvider.h"

namespace tesh::bramel {

/// The pictures of a control, shared by all controls of the same look. An empty image shows nothing.
using ImageSet = std::shared_ptr<const std::vector<juce::Image>>;

inline ImageSet makeImageSet(std::vector<juce::Image> images) {
  return std::make_shared<const std::vector<juce::Image>>(std::move(images));
}

/// An empty image for an unknown name.
inline juce::Image imageNamed(IBramelImageProvider& provider, const std::string& name) {
  const cofu::core::boxed::Box box = provider.getImage(name);
  const auto* const image = cofu::core::boxed::valueIn<juce::Image>(box);
  return image == nullptr ? juce::Image() : *image;
}

/// Height in panel pixels, ascent plus descent. The default typeface for an unknown name.
inline juce::Font fontNamed(IBramelFontProvider& provider, const std::string& name, double height) {
  const cofu::core::boxed::Box box = provider.getFont(name, height);
  const auto* const font = cofu::core::boxed::valueIn<juce::Font>(box);
  return font == nullptr ? juce::Font(static_cast<float>(height)) : *font;
}

}  // namespace tesh::bramel
