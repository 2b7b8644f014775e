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

/// Some frames of a control that turns or moves, side by side in one picture. Neighbouring frames are similar, so the
/// picture takes a twelfth of the bytes of single frames. While the panel cuts a strip, it holds its pixels beside the
/// frames, so a control has several strips.
struct Strip {
  std::string name;  ///< As a resource: NAME_STRIP_0, NAME_STRIP_1, ... The panel asks for frames NAME_0, NAME_1, ...
  int side;          ///< Of one frame, which is square; panel pixels.
  int frames;
  std::function<void(Canvas&, int frame)> draw;
};

std::vector<Strip> allStrips();

/// Draws each frame on a separate canvas, so that its position in the strip does not change its pixels.
juce::Image render(const Strip& strip, int scale);

}  // namespace sivray::art
