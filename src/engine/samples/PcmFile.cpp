// How stretches of samples are read into a slot. Plain loops swap the bytes and interleave the channels; the compiler
// turns them into vector code.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/samples/PcmFile.h"

#include <algorithm>
#include <array>
#include <limits>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/Files.h"
#include "storage/paths/Paths.h"

namespace tesh::bramel::plugin::sivray {

namespace {

constexpr std::uint16_t swapBytes(std::uint16_t word) { return static_cast<std::uint16_t>((word << 8) | (word >> 8)); }

std::int16_t sampleOf(std::uint16_t bigEndian) { return static_cast<std::int16_t>(swapBytes(bigEndian)); }

/// Seeks to a sample of the stretch that begins at `offset`. The format's byte offsets are signed 32-bit numbers, so a
/// stretch that begins beyond 2 GiB cannot be reached; then this returns false.
bool seekSample(platform::InputFile& file, std::uint32_t offset, std::size_t sample) {
  const std::uint32_t byteOffset = offset * 2U;
  const auto reachable = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
  return byteOffset <= reachable && file.seek(byteOffset + static_cast<std::int64_t>(sample) * 2);
}

/// Samples of the file as they lie there, on the stack of the reader.
constexpr std::size_t kReadSamples = 8192;
using ReadBuffer = std::array<std::uint16_t, kReadSamples>;

void readPiece(platform::InputFile& file, std::uint32_t offset, std::size_t sample, std::span<std::uint16_t> piece) {
  const std::size_t bytes = seekSample(file, offset, sample) ? file.read(piece.data(), piece.size_bytes()) : 0;
  std::fill(piece.begin() + static_cast<std::ptrdiff_t>(bytes / 2), piece.end(), std::uint16_t{0});
}

void interleave(const std::uint16_t* left, const std::uint16_t* right, std::size_t count, std::int16_t* frames) {
  for (std::size_t i = 0; i < count; ++i) {
    frames[2 * i] = sampleOf(left[i]);
    frames[2 * i + 1] = sampleOf(right[i]);
  }
}

void readMono(platform::InputFile& file, std::int16_t* destination, std::uint32_t offset, std::size_t frames) {
  ReadBuffer buffer;
  for (std::size_t done = 0; done < frames; done += kReadSamples) {
    const auto piece = std::span(buffer).first(std::min(kReadSamples, frames - done));
    readPiece(file, offset, done, piece);
    interleave(piece.data(), piece.data(), piece.size(), destination + done * 2);
  }
}

void readStereo(platform::InputFile& file, std::int16_t* destination, std::span<const std::uint32_t, 2> offsets,
                std::size_t frames) {
  constexpr std::size_t kHalf = kReadSamples / 2;
  ReadBuffer buffer;
  for (std::size_t done = 0; done < frames; done += kHalf) {
    const std::size_t count = std::min(kHalf, frames - done);
    const auto left = std::span(buffer).first(count);
    const auto right = std::span(buffer).subspan(kHalf, count);
    readPiece(file, offsets[0], done, left);
    readPiece(file, offsets[1], done, right);
    interleave(left.data(), right.data(), count, destination + done * 2);
  }
}

std::string dataPath(std::string_view folder) {
  return joinPath(joinPath(directoryFor("kBramelDirectory_Resource"), std::string(folder)), "drumdata.bin");
}

/// Once a process for each file in turn: a further instance finds the file in the system's cache, or what has left it
/// since is read when somebody asks for a wave.
void warmOnce(const std::string& file) {
  static std::mutex mutex;
  static std::string warmed;
  const std::lock_guard lock(mutex);
  if (std::exchange(warmed, file) != file) {
    platform::warmPages(file);
  }
}

}  // namespace

PcmFile::PcmFile(std::string_view folder) : path(dataPath(folder)), waveDatabase(folder) {
  waveDatabase.load();
  warmOnce(dataPath(folder));
}

std::size_t PcmFile::read(std::int16_t* destination, std::span<const std::uint32_t, 2> offsets, std::size_t frames,
                          std::size_t slotFrames) const {
  std::optional<platform::InputFile> file = platform::InputFile::open(path);
  if (!file) {
    return 0;
  }
  const std::size_t count = std::min(frames, slotFrames);
  if (offsets[0] == offsets[1]) {
    readMono(*file, destination, offsets[0], count);
  } else {
    readStereo(*file, destination, offsets, count);
  }
  std::fill(destination + count * 2, destination + slotFrames * 2, std::int16_t{0});
  return count;
}

}  // namespace tesh::bramel::plugin::sivray
