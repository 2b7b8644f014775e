// Reading a file whole, the same on every system.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Files.h"

namespace tesh::bramel::platform {

std::optional<std::vector<std::uint8_t>> readWhole(const NativePath& path, std::uint64_t mostBytes) {
  std::optional<InputFile> file = InputFile::open(path);
  if (!file || static_cast<std::uint64_t>(file->size()) > mostBytes) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file->size()));
  bytes.resize(file->read(bytes.data(), bytes.size()));
  return bytes;
}

}  // namespace tesh::bramel::platform
