// All models. Each has its own file.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "content/models/Model.h"

namespace sivray::content {

Model clapModel();     ///< Hand claps and finger snaps.
Model esnareModel();   ///< Electronic snares: two tones and noise.
Model fmModel();       ///< Frequency modulation: basses, bells, blips, metal.
Model glitchModel();   ///< Broken machines.
Model headModel();     ///< Struck skins: kicks, toms, hand drums.
Model impactModel();   ///< Explosions and other big impacts.
Model kickModel();     ///< A falling sine with a click: electronic kicks, toms, basses.
Model metalModel();    ///< Electronic hats and cymbals: a cluster of squares.
Model modalModel();    ///< Bars, bells, blocks.
Model plateModel();    ///< Struck plates: hats, cymbals, gongs.
Model pluckModel();    ///< Strings.
Model scratchModel();  ///< A record under a hand.
Model shakerModel();   ///< Many small collisions: shakers, jingles, scrapers, crackle.
Model snareModel();    ///< A skin with wires below it.
Model stabModel();     ///< Chords of oscillators through a moving filter.
Model sweepModel();    ///< Noise through a moving filter.
Model voiceModel();    ///< Sung vowels.
Model zapModel();      ///< Pitch sweeps.

}  // namespace sivray::content
