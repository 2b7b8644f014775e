// Recorded hits that waves are compared with, read from a folder of drum sets. They stay where they are: nothing of
// them is kept.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "content/measure/Figures.h"
#include "content/measure/Groups.h"
#include "content/measure/Picture.h"

namespace sivray::content {

/// The sets that hold a drum of a group belong to the two halves in turn, in the order of their names, acoustic ones
/// and those of machines each for themselves, so that waves can be tuned by one half and
/// judged by the other.
enum class Half : unsigned char { tune, judge, both };

struct Reference {
  std::string set;   ///< Name of its folder.
  std::string file;  ///< Name of the file.
  std::string drum;  ///< Its instrument in the set; hits of one drum share it.
  Group group = Group::kick;
  Half half = Half::tune;
  std::optional<double> monoLoss;  ///< As monoLossOf.
  Hit hit;
  Picture picture;
};

/// Reads the hits of all sets, one a sub-folder, that belong to a group. A set's drumkit.xml names its instruments and
/// their velocity layers, of which the harder half counts; without one, file names and folders do. Hits that another
/// set holds, too, and files that cannot be read are left out. Throws std::runtime_error if the folder holds no hit
/// at all.
std::vector<Reference> readReferences(const std::string& folder);

/// Adds the hits of more sets, which all belong to `half`. Otherwise as readReferences.
void addReferences(std::vector<Reference>& references, const std::string& folder, Half half);

/// Returns the hits of one half, or all.
std::vector<const Reference*> referencesOf(std::span<const Reference> references, Group group, Half half);

}  // namespace sivray::content
