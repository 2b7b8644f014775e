// Reads stretches of samples into a slot. Plain loops swap the bytes and interleave the channels; the compiler
// vectorises them.
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

/// Seeks to a sample of the stretch that begins at `offset`. The format's byte offsets are signed 32-bit numbers;
/// returns false for a stretch that begins beyond 2 GiB and so cannot be reached.
bool seekSample(platform::InputFile& file, std::uint32_t offset, std::size_t sample) {
  const std::uint32_t byteOffset = offset * 2U;
  const auto reachable = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
  return byteOffset <= reachable && file.seek(byteOffset + static_cast<std::int64_t>(sample) * 2);
}

/// Samples in the file's byte order, in a buffer on the stack.
constexpr std::size_t kReadSamples = 16384;
using ReadBuffer = std::array<std::uint16_t, kReadSamples>;

/// False if the reader would have to wait but must not.
bool readPiece(platform::InputFile& file, std::uint32_t offset, std::size_t sample, std::span<std::uint16_t> piece,
               Reading reading) {
  std::optional<std::size_t> bytes = 0;
  if (seekSample(file, offset, sample)) {
    bytes = reading == Reading::waits ? file.read(piece.data(), piece.size_bytes())
                                      : file.readCached(piece.data(), piece.size_bytes());
  }
  if (!bytes) {
    return false;
  }
  std::fill(piece.begin() + static_cast<std::ptrdiff_t>(*bytes / 2), piece.end(), std::uint16_t{0});
  return true;
}

void interleave(const std::uint16_t* left, const std::uint16_t* right, std::size_t count, std::int16_t* frames) {
  for (std::size_t i = 0; i < count; ++i) {
    frames[2 * i] = sampleOf(left[i]);
    frames[2 * i + 1] = sampleOf(right[i]);
  }
}

bool readMono(platform::InputFile& file, const WaveStretch& wave, std::int16_t* slot, std::size_t first,
              std::size_t end, Reading reading) {
  ReadBuffer buffer;
  for (std::size_t done = first; done < end; done += kReadSamples) {
    const auto piece = std::span(buffer).first(std::min(kReadSamples, end - done));
    if (!readPiece(file, wave.offsets[0], done, piece, reading)) {
      return false;
    }
    interleave(piece.data(), piece.data(), piece.size(), slot + done * 2);
  }
  return true;
}

bool readStereo(platform::InputFile& file, const WaveStretch& wave, std::int16_t* slot, std::size_t first,
                std::size_t end, Reading reading) {
  constexpr std::size_t kHalf = kReadSamples / 2;
  ReadBuffer buffer;
  for (std::size_t done = first; done < end; done += kHalf) {
    const std::size_t count = std::min(kHalf, end - done);
    const auto left = std::span(buffer).first(count);
    const auto right = std::span(buffer).subspan(kHalf, count);
    if (!readPiece(file, wave.offsets[0], done, left, reading) ||
        !readPiece(file, wave.offsets[1], done, right, reading)) {
      return false;
    }
    interleave(left.data(), right.data(), count, slot + done * 2);
  }
  return true;
}

/// Asks the system to read the next 1.5 seconds of a wave, which arrive while the earlier ones are played.
void expectFrom(const platform::InputFile& file, const WaveStretch& wave, std::size_t first) {
  constexpr std::int64_t kBytes = 128 << 10;
  const auto [left, right] = wave.offsets;
  const auto byteOf = [first](std::uint32_t offset) {
    return (std::int64_t{offset} + static_cast<std::int64_t>(first)) * 2;
  };
  file.expect(byteOf(left), kBytes);
  if (right != left) {
    file.expect(byteOf(right), kBytes);
  }
}

std::string dataPath(std::string_view folder) {
  return pathBelow(pathBelow(directoryFor("kBramelDirectory_Resource"), std::string(folder)), "drumdata.bin");
}

/// Reads the file into the system's cache, once per process. Pages that have left the cache since are read when
/// somebody asks for a wave.
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

bool PcmFile::readPart(platform::InputFile& file, const WaveStretch& wave, std::int16_t* slot, std::size_t first,
                       std::size_t count, Reading reading) {
  const std::size_t end = std::clamp(wave.frames, first, first + count);
  const auto read = wave.offsets[0] == wave.offsets[1] ? readMono : readStereo;
  if (!read(file, wave, slot, first, end, reading)) {
    expectFrom(file, wave, first);
    return false;
  }
  std::fill(slot + end * 2, slot + (first + count) * 2, std::int16_t{0});
  return true;
}

}  // namespace tesh::bramel::plugin::sivray
