// Makes the four files of a sample library from its waves: the sample data and three index files.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "content/library/Wave.h"

namespace sivray::content {

/// The bytes of the files, as the engine and the browser read them.
struct LibraryFiles {
  std::vector<std::uint8_t> data;        ///< drumdata.bin
  std::vector<std::uint8_t> samples;     ///< sampleparam.bin
  std::vector<std::uint8_t> waves;       ///< drumparam.bin
  std::vector<std::uint8_t> categories;  ///< drumparam_category.bin
};

/// Sample positions are signed 32-bit byte offsets, so the data stays below 2 GiB.
inline constexpr std::uint64_t kMostSampleData = (std::uint64_t{1} << 31) - 2;

/// Returns the number of bytes that a wave takes in drumdata.bin.
std::uint64_t sampleBytesOf(const Wave& wave);

/// Builds the files. A wave's number is its index in `waves`. Throws std::invalid_argument for a wave that the format
/// cannot hold (no name or one too long, no samples, channels of different length, no rate, unknown category), and when
/// the data exceeds kMostSampleData.
LibraryFiles makeLibrary(std::span<const Wave> waves);

/// Writes the four files into `folder`, making it if it is missing. Throws std::runtime_error naming the file that
/// could not be written.
void writeLibrary(const std::string& folder, std::span<const Wave> waves);

}  // namespace sivray::content
