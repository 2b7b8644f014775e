// The panel's typefaces and one of its pictures, for the program's strip and pages.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include <juce_graphics/juce_graphics.h>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "viewmodels/resources/ResourceStore.h"

namespace tesh::bramel::standalone {

inline constexpr const char* kCaptionFace = "Oswald Medium";
inline constexpr const char* kDisplayFace = "PF Arma Five";
inline constexpr const char* kListFace = "Open Sans Regular";
inline constexpr const char* kHeadingFace = "Open Sans SemiBold";
inline constexpr const char* kDefaultFace = "Roboto";

/// Must be destroyed before JUCE is shut down.
class ProgramFonts final : public IBramelFontProvider {
 public:
  ProgramFonts() {
    for (const char* const face : {kCaptionFace, kDisplayFace, kListFace, kHeadingFace, kDefaultFace}) {
      store.addFont(face);
    }
  }

  cofu::core::boxed::Box getFont(const std::string& name, double height) override {
    return store.getFont(name, height);
  }

  /// The picture of a lit pad; an empty image if it is missing.
  juce::Image getIcon() {
    constexpr int kDoubleSet = 2;
    const auto box = store.getImage("Sivray_Pad_On", kDoubleSet);
    const auto* const image = cofu::core::boxed::valueIn<juce::Image>(box);
    return image == nullptr ? juce::Image() : *image;
  }

 private:
  ResourceStore store;
};

}  // namespace tesh::bramel::standalone
