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

/// The category of each pad, starting with the pad of note 36.
inline constexpr std::array<int, factory::kPads> kPadCategories{0, 7, 1, 2, 6, 5, 3, 4};

/// Makes a kit of each folder below `root` whose files hold a kick, a snare or clap, and waves for two more pads; the
/// files of sub-folders count unless these make a kit themselves. If no folder makes a kit, `root` does. A pad without
/// a wave of its category gets another wave of the folder. Kits get the names of their folders, changed where `taken`
/// already holds the name. Levels are those of a new pad. `waves` must not be empty.
std::vector<factory::Kit> makeKits(const std::vector<PackedWave>& waves, const std::filesystem::path& root,
                                   std::set<std::string> taken);

/// Returns a kit's text, which lists the settings that differ from a new pad's.
std::string textOf(const factory::Kit& kit);

}  // namespace sivray::content
