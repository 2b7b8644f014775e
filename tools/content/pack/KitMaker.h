// Makes kits of packed waves: one for each folder that holds enough of a drum set.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "content/factory/Kit.h"
#include "content/pack/Packer.h"

namespace sivray::content {

/// The category of each pad's role, from the pad of note 36 up.
inline constexpr std::array<int, factory::kPads> kPadCategories{0, 7, 1, 2, 6, 5, 3, 4};

/// Makes a kit of each folder below `root` whose files, its sub-folders' included unless those make a kit themselves,
/// hold a kick, a snare or clap, and two more of the pads' roles; and one of `root` if no folder does. A pad without a
/// wave of its role gets another one of the folder. Kits are named after their folders, none as in `taken`. Levels are
/// those of a new pad. `waves` is not empty.
std::vector<factory::Kit> makeKits(const std::vector<PackedWave>& waves, const std::filesystem::path& root,
                                   std::set<std::string> taken);

/// Returns a kit's text, with the settings that differ from a new pad's.
std::string textOf(const factory::Kit& kit);

}  // namespace sivray::content
