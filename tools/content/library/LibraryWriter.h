// The four files of a sample library, made of its waves: the sample data, and the three index files that stand beside
// it.
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

/// Bytes that a wave takes in drumdata.bin.
std::uint64_t sampleBytesOf(const Wave& wave);

/// A wave's number is its place in `waves`. Throws std::invalid_argument for a wave that the format cannot hold (no
/// name or one too long, no samples, sides of different length, no rate, no such category), and when all are too much.
LibraryFiles makeLibrary(std::span<const Wave> waves);

/// Writes the four files into `folder`, which is made where it is missing. Throws std::runtime_error naming the file
/// that could not be written.
void writeLibrary(const std::string& folder, std::span<const Wave> waves);

}  // namespace sivray::content
