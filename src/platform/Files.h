// Files by UTF-8 path, with either separator. The rest of the system writes paths with a backslash; only this layer
// turns it into the system's own. SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tesh::bramel::platform {

/// A path in the system's own form, made once so that opening the file later allocates nothing.
class NativePath {
 public:
#ifdef _WIN32
  using Text = std::wstring;
#else
  using Text = std::string;
#endif

  /// From UTF-8 with either separator.
  explicit NativePath(const std::string& path);
  const Text::value_type* text() const { return nativeText.c_str(); }

 private:
  Text nativeText;
};

/// A file open for binary reading. Nothing is buffered and nothing allocated between open and close, so that it may be
/// used where a wave changes on the audio thread.
class InputFile {
 public:
  /// Gives nothing when the file cannot be opened or is a folder.
  static std::optional<InputFile> open(const NativePath& path);
  static std::optional<InputFile> open(const std::string& path) { return open(NativePath(path)); }

  InputFile(InputFile&& other) noexcept;
  InputFile& operator=(InputFile&& other) noexcept;
  ~InputFile();

  /// Bytes in the file, or 0 when that cannot be told.
  std::int64_t size() const;

  /// Moves to `offset` bytes from the start.
  bool seek(std::int64_t offset);

  /// Reads up to `count` bytes and gives how many came: fewer only at the end of the file or on an error.
  std::size_t read(void* destination, std::size_t count);

 private:
  explicit InputFile(std::intptr_t nativeHandle) : handle(nativeHandle) {}
  void close();

  static constexpr std::intptr_t kClosed = -1;
  std::intptr_t handle = kClosed;
};

/// `base` and `relative`, neither of them empty, with one separator between them; with a backslash where neither brings
/// one. On Windows that is the system's own way of joining, which takes "." and ".." out and gives the empty string for
/// what is too long for it.
std::string combinePath(const std::string& base, const std::string& relative);

/// True for a file or folder that exists.
bool exists(const std::string& path);

/// The whole file, or nothing when it cannot be opened.
std::optional<std::vector<std::uint8_t>> readWhole(const std::string& path);

/// Writes a file beside its target, flushes it and lets it take the target's name: the old file stays as it was unless
/// all of that succeeds. Gives false on failure.
bool writeAtomically(const std::string& path, std::span<const std::uint8_t> bytes);

/// Makes a folder and its parents. True when the folder exists afterwards.
bool createFolders(const std::string& path);

/// Asks the system to bring a file's pages into memory. It returns when they are there or the system has refused.
void warmPages(const std::string& path);

}  // namespace tesh::bramel::platform
