// The user's own sounds that a song refers to and that the user's content lacks.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "viewmodels/texts/PanelMacros.h"

namespace tesh::vimo {

class SampleLibrary;

}  // namespace tesh::vimo

namespace tesh::bramel::vst {

class BramelInstrument;

struct MissingSound {
  std::size_t pad = 0;      ///< From 0.
  std::int32_t number = 0;  ///< Its wave number in content with own sounds.
  std::string name;         ///< Empty if the user's content never had such a sound.
};

/// The values of the parameters that choose the pads' sounds, 0 to 1.
using SoundValues = std::array<float, panel::kPads>;

/// Returns the missing sounds. A value counts only if it is exactly that of an own wave's number, so that values which
/// a host's automation passes on its way do not count.
std::vector<MissingSound> missingSounds(const SoundValues& values, const vimo::SampleLibrary& library);

/// Returns the sounds that `instrument` misses now. Not on the audio thread.
std::vector<MissingSound> missingSounds(BramelInstrument& instrument);

/// Returns one line such as `Pad 3 misses "Oak Kick" (removed), pad 5 misses your sound no. 17: factory sounds play
/// instead`; empty for no sounds.
std::string describeMissing(const std::vector<MissingSound>& sounds);

}  // namespace tesh::bramel::vst
