// Files by UTF-8 path. Other code separates folders by a backslash; only this layer converts it to the system's
// separator. No call waits for another process: pipes, devices and sockets are refused.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tesh::bramel::platform {

/// A path in the operating system's form. Converted once, so that opening the file later allocates nothing.
class NativePath {
 public:
#ifdef _WIN32
  using Text = std::wstring;
#else
  using Text = std::string;
#endif

  /// From UTF-8 with either separator.
  explicit NativePath(const std::string& path);

  /// From a path that the user has chosen in a dialog. Outside Windows a file name may contain a backslash: it is kept
  /// if a file with it exists, or if the folder does not exist that it would name as a separator.
  static NativePath chosen(const std::string& path);

  const Text::value_type* text() const { return nativeText.c_str(); }

  /// UTF-8, for a message to the user.
  std::string shown() const;

 private:
  NativePath() = default;

  Text nativeText;
};

/// Identifies a file and its contents: two versions are equal only if they are of one file that nobody has written in
/// between. Does not detect a change of the same size within a few milliseconds of the one before.
struct FileVersion {
  std::array<std::uint64_t, 7> words{};  ///< The system's numbers of volume, file, size and times.

  // NOLINTNEXTLINE(modernize-use-nullptr): the compiler's own code compares with 0.
  friend auto operator<=>(const FileVersion&, const FileVersion&) = default;
};

/// A regular file, open for binary reading. It has no buffer and never allocates, because the audio thread reads waves
/// from it. One thread at a time.
class InputFile {
 public:
  /// Nothing if the file cannot be opened or is not a regular file.
  static std::optional<InputFile> open(const NativePath& path);
  static std::optional<InputFile> open(const std::string& path) { return open(NativePath(path)); }

  InputFile(InputFile&& other) noexcept;
  InputFile& operator=(InputFile&& other) noexcept;
  ~InputFile();

  /// The file's size in bytes; 0 if the system cannot tell.
  std::int64_t size() const;

  /// The file's present version; nothing if the system cannot tell.
  std::optional<FileVersion> version() const;

  /// Sets the position to `offset` bytes from the start. False if it is negative or the system refuses.
  bool seek(std::int64_t offset);

  /// Reads up to `count` bytes and returns their number, which is smaller only at the end of the file or on an error.
  std::size_t read(void* destination, std::size_t count);

  /// Like `read`, but only from the system's cache. Returns nothing if it would have to wait for the disk;
  /// `destination` may then be partly written. On a system that cannot tell, reads and waits.
  std::optional<std::size_t> readCached(void* destination, std::size_t count);

  /// Asks the system to read a stretch into its cache, without waiting. Does nothing on a system that cannot do this.
  void expect(std::int64_t offset, std::int64_t count) const;

 private:
  explicit InputFile(std::intptr_t nativeHandle) : handle(nativeHandle) {}
  void close();

  static constexpr std::intptr_t kClosed = -1;
  std::intptr_t handle = kClosed;
};

/// Joins two non-empty paths, with a backslash unless `base` ends with a separator. On Windows it follows the system's
/// rules: it resolves "." and "..", and a result of MAX_PATH characters or more is the empty string.
std::string combinePath(const std::string& base, const std::string& relative);

/// True if there is a file or folder at `path`.
bool exists(const NativePath& path);
inline bool exists(const std::string& path) { return exists(NativePath(path)); }

/// 64 MiB, larger than any of our files that are read as a whole.
inline constexpr std::uint64_t kLargestFile = std::uint64_t{64} << 20U;

/// The whole file; nothing if it cannot be opened, is not a regular file, or has more than `mostBytes`.
std::optional<std::vector<std::uint8_t>> readWhole(const NativePath& path, std::uint64_t mostBytes = kLargestFile);
inline std::optional<std::vector<std::uint8_t>> readWhole(const std::string& path,
                                                          std::uint64_t mostBytes = kLargestFile) {
  return readWhole(NativePath(path), mostBytes);
}

/// Replaces a file in one step, or creates it: writes a new file beside it, flushes that to the disk and renames it. On
/// failure the old file is unchanged. Follows a symbolic link, and keeps the old file's permissions; on Windows also
/// its owner, attributes and time of creation. False on failure, for an empty path, if the target exists and is not a
/// regular file, and on Windows if the file is read-only or another program holds it open.
bool writeAtomically(const NativePath& path, std::span<const std::uint8_t> bytes);
inline bool writeAtomically(const std::string& path, std::span<const std::uint8_t> bytes) {
  return writeAtomically(NativePath(path), bytes);
}

/// Creates a folder and its parents. True if the folder exists afterwards.
bool createFolders(const std::string& path);

/// Asks the system to read a file into its cache, so that later reads are fast. May wait for the disk. Ignores errors.
void warmPages(const std::string& path);

}  // namespace tesh::bramel::platform
