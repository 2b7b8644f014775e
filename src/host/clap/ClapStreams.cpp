// Reads and writes until all is done.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/clap/ClapStreams.h"

#include <algorithm>
#include <cstddef>

namespace tesh::bramel::clap {
namespace {

constexpr std::size_t kPiece = 65536;
/// A state has about 380 KB. This limit stops a stream without an end.
constexpr std::size_t kMostBytes = std::size_t{64} << 20U;

}  // namespace

bool writeAll(const OutputStream* stream, std::span<const std::uint8_t> bytes) {
  if (stream == nullptr || stream->write == nullptr) {
    return false;
  }
  while (!bytes.empty()) {
    const std::int64_t written = stream->write(stream, bytes.data(), bytes.size());
    if (written <= 0 || static_cast<std::uint64_t>(written) > bytes.size()) {
      return false;
    }
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

std::optional<std::vector<std::uint8_t>> readAll(const InputStream* stream) {
  if (stream == nullptr || stream->read == nullptr) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes;
  std::size_t size = 0;
  while (size < kMostBytes) {
    bytes.resize(size + kPiece);
    const std::int64_t got = stream->read(stream, bytes.data() + size, kPiece);
    if (got < 0 || static_cast<std::uint64_t>(got) > kPiece) {
      return std::nullopt;
    }
    if (got == 0) {
      bytes.resize(size);
      return bytes;
    }
    size += static_cast<std::size_t>(got);
  }
  return std::nullopt;
}

}  // namespace tesh::bramel::clap
