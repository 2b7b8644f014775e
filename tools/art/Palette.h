// The colours of the panel. Amber means "now", periwinkle means "set".
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_graphics/juce_graphics.h>

namespace sivray::art {

/// The opaque colour 0xRRGGBB.
inline juce::Colour rgb(juce::uint32 code) { return juce::Colour(0xff000000U | code); }
inline juce::Colour black(float alpha) { return juce::Colours::black.withAlpha(alpha); }
inline juce::Colour white(float alpha) { return juce::Colours::white.withAlpha(alpha); }

inline const juce::Colour kCobalt = rgb(0x222792);
inline const juce::Colour kNight = rgb(0x15162C);
inline const juce::Colour kPeriwinkle = rgb(0x95A8EF);
inline const juce::Colour kAmber = rgb(0xFFC100);
inline const juce::Colour kChalk = rgb(0xF4F1E9);
inline const juce::Colour kLabel = rgb(0xA8B1CD);  ///< Captions on cobalt.

}  // namespace sivray::art
