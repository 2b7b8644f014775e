// Lays waves out as sample data and index records, and writes the four files.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/library/LibraryWriter.h"

#include <stdexcept>
#include <utility>

#include "content/Files.h"
#include "core/LittleEndian.h"

namespace sivray::content {
namespace {

using tesh::cofu::core::ByteWriter;

enum WaveType : std::uint32_t { kMono = 1, kStereo = 2 };

constexpr std::size_t kUnusedCategoryBytes = 8;

void requireWhole(const Wave& wave) {
  const auto fail = [&wave](const char* reason) {
    throw std::invalid_argument("wave '" + wave.name + "': " + std::string(reason));
  };
  if (wave.name.empty() || wave.name.size() > kLongestWaveName) {
    fail("a name has 1 to 12 characters");
  }
  if (wave.left.empty() || (!wave.right.empty() && wave.right.size() != wave.left.size())) {
    fail("both sides need the same number of samples, at least one");
  }
  if (wave.sampleRate <= 0) {
    fail("the sample rate must be above 0");
  }
  if (wave.category < 0 || static_cast<std::size_t>(wave.category) >= kCategoryNames.size()) {
    fail("there is no such category");
  }
}

/// Appends one channel to the data and its record to the index. Returns the record's number.
std::uint32_t addStretch(LibraryFiles& files, const std::vector<std::int16_t>& samples, int sampleRate) {
  constexpr std::size_t kRecordBytes = 12;
  const auto number = static_cast<std::uint32_t>(files.samples.size() / kRecordBytes);
  const auto start = static_cast<std::uint32_t>(files.data.size() / 2);
  ByteWriter record(files.samples);
  record.word(start);
  record.word(start + static_cast<std::uint32_t>(samples.size()) - 1);
  record.word(static_cast<std::uint32_t>(sampleRate));
  for (const std::int16_t sample : samples) {
    const auto bits = static_cast<std::uint16_t>(sample);
    files.data.push_back(static_cast<std::uint8_t>(bits >> 8));
    files.data.push_back(static_cast<std::uint8_t>(bits));
  }
  return number;
}

void addWave(LibraryFiles& files, const Wave& wave) {
  const bool isStereo = !wave.right.empty();
  const std::uint32_t left = addStretch(files, wave.left, wave.sampleRate);
  const std::uint32_t right = isStereo ? addStretch(files, wave.right, wave.sampleRate) : 0;

  ByteWriter record(files.waves);
  record.word(isStereo ? kStereo : kMono);
  record.text(wave.name);
  record.zeros(kLongestWaveName - wave.name.size());
  record.word(left);
  record.word(right);

  ByteWriter category(files.categories);
  category.word(static_cast<std::uint32_t>(wave.category) + 1);
  category.text(wave.name);
  category.zeros(kLongestWaveName - wave.name.size() + kUnusedCategoryBytes);
}

}  // namespace

std::uint64_t sampleBytesOf(const Wave& wave) { return 2 * (std::uint64_t{wave.left.size()} + wave.right.size()); }

LibraryFiles makeLibrary(std::span<const Wave> waves) {
  std::uint64_t bytes = 0;
  for (const Wave& wave : waves) {
    requireWhole(wave);
    bytes += sampleBytesOf(wave);
  }
  if (bytes > kMostSampleData) {
    throw std::invalid_argument("the waves take more than the 2 GiB that a sample library can hold");
  }
  LibraryFiles files;
  files.data.reserve(static_cast<std::size_t>(bytes));
  for (const Wave& wave : waves) {
    addWave(files, wave);
  }
  return files;
}

void writeLibrary(const std::string& folder, std::span<const Wave> waves) {
  const LibraryFiles files = makeLibrary(waves);
  writeFile(folder + "/drumdata.bin", files.data);
  writeFile(folder + "/sampleparam.bin", files.samples);
  writeFile(folder + "/drumparam.bin", files.waves);
  writeFile(folder + "/drumparam_category.bin", files.categories);
}

}  // namespace sivray::content
