// What reading a file whole takes, on every system.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Files.h"

namespace tesh::bramel::platform {

std::optional<std::vector<std::uint8_t>> readWhole(const std::string& path) {
  std::optional<InputFile> file = InputFile::open(path);
  if (!file) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(file->size()));
  bytes.resize(file->read(bytes.data(), bytes.size()));
  return bytes;
}

}  // namespace tesh::bramel::platform
