// Finds the waves of a library that sound alike.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "content/library/Wave.h"
#include "engine/samples/SimilarWaves.h"

namespace sivray::content {

/// A wave and its number in the engine.
struct NumberedWave {
  std::int32_t number = 0;
  const Wave* wave = nullptr;
  std::optional<float> loudness;  ///< As a WaveKin has it; measured if not known.
};

/// How much of a wave counts, from its start.
inline constexpr int kComparedSeconds = 4;

/// Measures each wave's loudness where it is not known, and D from each to each. On all cores.
std::vector<tesh::vimo::WaveKin> similarWaves(std::span<const NumberedWave> waves);

/// Writes the result beside the index files of the library in `folder`, which must be written before. Throws
/// std::runtime_error naming the file that could not be read or written.
void writeSimilar(const std::string& folder, std::span<const NumberedWave> waves);

/// The same for waves whose numbers are their places.
void writeSimilar(const std::string& folder, std::span<const Wave> waves);

}  // namespace sivray::content
