// Common to all systems: ownership of an open file, and reading a whole file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Files.h"

#include <utility>

namespace tesh::bramel::platform {

InputFile::InputFile(InputFile&& other) noexcept : handle(std::exchange(other.handle, kClosed)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
  if (this != &other) {
    close();
    handle = std::exchange(other.handle, kClosed);
  }
  return *this;
}

InputFile::~InputFile() { close(); }

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
