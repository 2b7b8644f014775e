// A temporary folder for one test, and whole files for it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace support {

/// `bytes` is a text or a vector of bytes. Makes the file's folder if it is missing.
template <typename Bytes>
void writeFile(const std::filesystem::path& path, const Bytes& bytes) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(std::data(bytes)), static_cast<std::streamsize>(std::size(bytes)));
}
inline void writeFile(const std::filesystem::path& path, const char* text) { writeFile(path, std::string(text)); }

/// The whole file; empty if there is none.
inline std::string textIn(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
inline std::vector<std::uint8_t> bytesIn(const std::filesystem::path& path) {
  const std::string text = textIn(path);
  return {text.begin(), text.end()};
}

/// An empty folder, removed with this object.
class Scratch {
 public:
  Scratch() {
    static int made = 0;
    folder = std::filesystem::temp_directory_path() /
             ("sivray-test-" + std::to_string(::getpid()) + "-" + std::to_string(made++));
    std::filesystem::create_directories(folder);
  }
  ~Scratch() { std::filesystem::remove_all(folder); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  /// The folder's path.
  std::string path() const { return folder.string(); }
  /// That of a file or folder in it.
  std::string path(const std::string& name) const { return (folder / name).string(); }
  std::filesystem::path operator/(const std::string& name) const { return folder / name; }

  /// Writes a file and returns its path.
  template <typename Bytes>
  std::string write(const std::string& name, const Bytes& bytes) const {
    writeFile(folder / name, bytes);
    return path(name);
  }

 private:
  std::filesystem::path folder;
};

}  // namespace support
