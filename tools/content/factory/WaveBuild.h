// Builds the factory waves; waves that would not change are copied from an earlier library.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "content/library/Wave.h"

namespace sivray::content {

struct WaveBuild {
  std::vector<Wave> waves;  ///< By number.
  std::size_t rendered = 0;
  /// Notes for the next build: hashes of each wave's sources.
  std::string notes;
};

/// The results of an earlier build.
struct EarlierBuild {
  std::string library;  ///< Folder of the sample library.
  std::string notes;    ///< File with the notes.
  std::string code;     ///< File of the compiled code that renders the waves.
};

/// Renders all waves of a folder of tables. A wave of the earlier build is kept if the code has the same bytes, the
/// wave has the same row, and its samples match the notes. If the library or the notes are missing or broken,
/// everything is rendered. Throws like `readFactoryRows`, and std::runtime_error if the file of the code cannot be
/// read.
WaveBuild buildWaves(const std::string& tables, const EarlierBuild& earlier);

}  // namespace sivray::content
