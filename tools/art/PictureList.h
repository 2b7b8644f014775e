// Every picture of the panel by name and size.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Canvas.h"
#include "Lettering.h"

namespace sivray::art {

struct Picture {
  std::string name;  ///< As a resource: upper case, underscores for blanks.
  int width;         ///< Panel pixels.
  int height;
  std::function<void(Canvas&, const Lettering&)> draw;
};

std::vector<Picture> allPictures();

/// The picture at `scale` device pixels for each panel pixel.
juce::Image render(const Picture& picture, const Lettering& lettering, int scale);

}  // namespace sivray::art
