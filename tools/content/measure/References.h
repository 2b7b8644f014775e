// Recorded hits that waves are compared with, read from a folder of drum sets. No recording gets into the content.
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

/// Sets belong to the two halves alternately, in the order of their names; acoustic sets and machines are counted
/// separately. Waves can thus be tuned by one half and judged by the other.
enum class Half : unsigned char { tune, judge, both };

struct Reference {
  std::string set;   ///< Name of its folder.
  std::string file;  ///< Name of the file.
  std::string drum;  ///< Name of its instrument in the set; hits of one drum share it.
  Group group = Group::kick;
  Half half = Half::tune;
  std::optional<double> monoLoss;  ///< See monoLossOf.
  Hit hit;
  Picture picture;
};

/// Reads the hits that belong to a group, of all sets; each sub-folder is a set. A set's drumkit.xml names its
/// instruments and their velocity layers, of which the harder half is read; without that file, the names of files and
/// folders decide. Skips hits that another set also holds, and files that cannot be read. Throws std::runtime_error if
/// the folder holds no hit.
std::vector<Reference> readReferences(const std::string& folder);

/// As readReferences, for further sets that all belong to `half`.
void addReferences(std::vector<Reference>& references, const std::string& folder, Half half);

/// Returns the hits of a group in one half, or in both.
std::vector<const Reference*> referencesOf(std::span<const Reference> references, Group group, Half half);

}  // namespace sivray::content
