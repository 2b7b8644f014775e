// Renders a score through each of the thirty effect types, and a sheet of their spectrograms.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MidiScore.h"
#include "Options.h"

namespace sivray::render {

/// Writes one WAV file for each effect type, and the sheet. All pads send to the effect, and only the score's notes are
/// played. The sheet shows the left channel. Types that the panel does not offer are rendered directly, as with
/// --direct. Throws RenderError.
void renderEffectTour(const Options& options, const MidiScore& score);

}  // namespace sivray::render
