// The program's icon as desktops show it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

#include <array>

namespace sivray::art {

/// The sides of the icons in pixels, as the hicolor theme of desktops has them.
inline constexpr std::array kIconSides{16, 22, 24, 32, 48, 64, 128, 256, 512};

/// A lit pad on the panel's cobalt, `side` pixels wide and high; below 32 pixels only the pad.
juce::Image drawIcon(int side);

}  // namespace sivray::art
