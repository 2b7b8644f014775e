// Builds the factory waves, and takes over from an earlier library those that would come out the same.
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
  /// What each wave was made of, for the next build.
  std::string notes;
};

/// Where an earlier build left its results.
struct EarlierBuild {
  std::string library;  ///< Folder of the sample library.
  std::string notes;    ///< File with the notes.
  std::string code;     ///< File of the compiled code that renders the waves.
};

/// Renders all waves of a folder of tables. A wave of the earlier build stays if the code has the same bytes, the wave
/// has the same row, and its samples are those that the notes tell of; a library or notes that are missing or broken
/// only cost time. Throws as `readFactoryRows`, and std::runtime_error if the file of the code cannot be read.
WaveBuild buildWaves(const std::string& tables, const EarlierBuild& earlier);

}  // namespace sivray::content
