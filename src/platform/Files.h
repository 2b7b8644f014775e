// Files by UTF-8 path. The rest of our code separates folders with a backslash; only this layer turns it into the
// separator of the operating system. No call waits for another process: pipes, devices and sockets are refused.
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

/// A path in the operating system's form. It is made once, so that opening the file later allocates nothing.
class NativePath {
 public:
#ifdef _WIN32
  using Text = std::wstring;
#else
  using Text = std::string;
#endif

  /// From UTF-8 with either separator.
  explicit NativePath(const std::string& path);

  /// From a path that the user has chosen in a dialog. Outside Windows a file name may contain a backslash: it stays
  /// one if that file exists, or if the folder that it would name as a separator does not.
  static NativePath chosen(const std::string& path);

  const Text::value_type* text() const { return nativeText.c_str(); }

  /// UTF-8, for a message to the user.
  std::string shown() const;

 private:
  NativePath() = default;

  Text nativeText;
};

/// Tells files, and contents of a file, apart: two are equal only if they are of one file that nobody has written
/// meanwhile. A change that leaves size and clock alone, within a few milliseconds of the one before, is not seen.
struct FileVersion {
  std::array<std::uint64_t, 7> words{};  ///< As the system counts volumes, files, bytes and times.

  // NOLINTNEXTLINE(modernize-use-nullptr): what the compiler makes of it compares with 0.
  friend auto operator<=>(const FileVersion&, const FileVersion&) = default;
};

/// A regular file, open for binary reading. It has no buffer and never allocates, because the audio thread reads waves
/// through it. One thread at a time.
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

  /// What the file is now; nothing if the system cannot tell.
  std::optional<FileVersion> version() const;

  /// Sets the position to `offset` bytes from the start. False if it is negative or the system refuses.
  bool seek(std::int64_t offset);

  /// Reads up to `count` bytes and returns their number, which is smaller only at the end of the file or on an error.
  std::size_t read(void* destination, std::size_t count);

  /// As `read`, but from the system's cache alone: nothing, with part of `destination` written, if it would have to
  /// wait for the disk. A system that cannot tell reads and waits.
  std::optional<std::size_t> readCached(void* destination, std::size_t count);

  /// Asks the system to read a stretch into its cache and does not wait for it; a system that cannot do this does
  /// nothing.
  void expect(std::int64_t offset, std::int64_t count) const;

 private:
  explicit InputFile(std::intptr_t nativeHandle) : handle(nativeHandle) {}
  void close();

  static constexpr std::intptr_t kClosed = -1;
  std::intptr_t handle = kClosed;
};

/// Joins two paths, neither of them empty, with a backslash unless `base` ends with a separator. Windows joins them by
/// its own rules: it resolves "." and "..", and a result of MAX_PATH characters or more is the empty string.
std::string combinePath(const std::string& base, const std::string& relative);

/// True if there is a file or folder at `path`.
bool exists(const NativePath& path);
inline bool exists(const std::string& path) { return exists(NativePath(path)); }

/// 64 MiB, more than any of our files that are read as a whole.
inline constexpr std::uint64_t kLargestFile = std::uint64_t{64} << 20U;

/// The whole file; nothing if it cannot be opened, is not a regular file, or has more than `mostBytes`.
std::optional<std::vector<std::uint8_t>> readWhole(const NativePath& path, std::uint64_t mostBytes = kLargestFile);
inline std::optional<std::vector<std::uint8_t>> readWhole(const std::string& path,
                                                          std::uint64_t mostBytes = kLargestFile) {
  return readWhole(NativePath(path), mostBytes);
}

/// Replaces a file in one step, or creates it: writes a new file beside it, flushes that to the disk and renames it. On
/// failure the old file is unchanged. Follows a symbolic link, and keeps the permissions of the old file; on Windows
/// also its owner, attributes and time of creation. False on failure, for an empty path, if the target exists and is
/// not a regular file, and on Windows if it is read-only or, at the moment, held open by another program.
bool writeAtomically(const NativePath& path, std::span<const std::uint8_t> bytes);
inline bool writeAtomically(const std::string& path, std::span<const std::uint8_t> bytes) {
  return writeAtomically(NativePath(path), bytes);
}

/// Creates a folder and its parents. True if the folder exists afterwards.
bool createFolders(const std::string& path);

/// Asks the system to read a file into its cache, so that later reads are fast. May wait for the disk; errors are
/// ignored.
void warmPages(const std::string& path);

}  // namespace tesh::bramel::platform
