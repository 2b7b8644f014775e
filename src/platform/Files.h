// Files by UTF-8 path. The rest of the system writes paths with a backslash as separator; only this layer turns it into
// the system's own. No call waits for another process: pipes, devices and sockets are refused.
// SPDX-License-Identifier: GPL-3.0-or-later
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

  /// From a path that the user has chosen. A name may contain a backslash where the system's own separator is another:
  /// the backslash stays if a file is found that way, or if the folder that it would lead to does not exist.
  static NativePath chosen(const std::string& path);

  const Text::value_type* text() const { return nativeText.c_str(); }

 private:
  NativePath() = default;

  Text nativeText;
};

/// A regular file open for binary reading. Nothing is buffered and nothing allocated between open and close, so that
/// the audio thread may use it to change a wave.
class InputFile {
 public:
  /// Nothing if the file cannot be opened or is no regular file. Does not wait for a writer at a pipe's other end.
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

/// The most that is read into memory at once. Larger than any file of the system that is read whole.
inline constexpr std::uint64_t kLargestFile = std::uint64_t{64} << 20U;

/// The whole file; nothing if it cannot be opened, is no regular file, or has more than `mostBytes`.
std::optional<std::vector<std::uint8_t>> readWhole(const NativePath& path, std::uint64_t mostBytes = kLargestFile);
inline std::optional<std::vector<std::uint8_t>> readWhole(const std::string& path,
                                                          std::uint64_t mostBytes = kLargestFile) {
  return readWhole(NativePath(path), mostBytes);
}

/// Writes a file beside its target, flushes it and gives it the target's name: the old file stays as it was unless all
/// of that succeeds. A symbolic link stays, and the file that it names is replaced. The new file has the permissions of
/// the old one. False on failure, and if the target exists and is no regular file.
bool writeAtomically(const NativePath& path, std::span<const std::uint8_t> bytes);
inline bool writeAtomically(const std::string& path, std::span<const std::uint8_t> bytes) {
  return writeAtomically(NativePath(path), bytes);
}

/// Makes a folder and its parents. True when the folder exists afterwards.
bool createFolders(const std::string& path);

/// Asks the system to bring a file's pages into memory. It returns when they are there or the system has refused.
void warmPages(const std::string& path);

}  // namespace tesh::bramel::platform
