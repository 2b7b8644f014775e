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
  std::optional<float> loudness;  ///< The wave's loudness as WaveKin holds it; measured if not given.
};

/// The seconds of a wave, from its start, that are compared.
inline constexpr int kComparedSeconds = 4;

/// Measures the loudness of waves that have none, and D between each two waves. Uses all cores.
std::vector<tesh::vimo::WaveKin> similarWaves(std::span<const NumberedWave> waves);

/// Writes the result beside the index files of the library in `folder`, which must exist. Throws std::runtime_error
/// naming the file that could not be read or written.
void writeSimilar(const std::string& folder, std::span<const NumberedWave> waves);

/// As above, for waves whose numbers are their indices.
void writeSimilar(const std::string& folder, std::span<const Wave> waves);

}  // namespace sivray::content
