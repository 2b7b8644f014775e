// The waves to measure, from tables, a sample library or sound files.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "content/library/Wave.h"
#include "content/measure/Groups.h"

namespace sivray::content {

struct SourceWave {
  Wave wave;
  std::optional<Group> group;
};

/// Reads the waves of a folder of tables (which are rendered; their models tell acoustic sounds from machines), of a
/// sample library's files, or of sound files (all count as acoustic). `only` is the name of the one wave to read; empty
/// for all. Throws std::runtime_error if the folder holds none of these, or no such wave.
std::vector<SourceWave> readSourceWaves(const std::string& folder, const std::string& only);

}  // namespace sivray::content
