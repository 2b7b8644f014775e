// The faces of the panel, for what the program shows around it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "viewmodels/resources/IBramelFontProvider.h"
#include "viewmodels/resources/ResourceStore.h"

namespace tesh::bramel::standalone {

inline constexpr const char* kCaptionFace = "Oswald Medium";
inline constexpr const char* kDisplayFace = "PF Arma Five";
inline constexpr const char* kListFace = "Open Sans Regular";
inline constexpr const char* kHeadingFace = "Open Sans SemiBold";

/// Must be destroyed before JUCE is shut down.
class ProgramFonts final : public IBramelFontProvider {
 public:
  ProgramFonts() {
    for (const char* const face : {kCaptionFace, kDisplayFace, kListFace, kHeadingFace}) {
      store.addFont(face);
    }
  }

  cofu::core::boxed::Box getFont(const std::string& name, double height) override {
    return store.getFont(name, height);
  }

 private:
  ResourceStore store;
};

}  // namespace tesh::bramel::standalone
