// Renders a score once through each of the thirty effect types, with one picture of all their spectrograms.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MidiScore.h"
#include "Options.h"

namespace sivray::render {

/// All pads send to the effect, and only the score's notes are played. The picture shows the left side. Types without a
/// step on the panel are played past the plug-in, as --direct does. Throws RenderError.
void renderEffectTour(const Options& options, const MidiScore& score);

}  // namespace sivray::render
