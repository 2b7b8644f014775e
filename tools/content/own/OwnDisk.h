// Steps on the disk that the standard library does not offer, one file for each system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace sivray::content {

/// A file that one program at a time holds, until it ends.
class LockFile {
 public:
  /// Takes hold of the file, which is made where it is missing. Null if another program holds it. Throws
  /// std::runtime_error if it cannot be opened.
  static std::unique_ptr<LockFile> tryHold(const std::filesystem::path& path);
  virtual ~LockFile() = default;
};

/// A file that grows while others read it.
class GrowingFile {
 public:
  /// Throws std::runtime_error, as the other operations do.
  static std::unique_ptr<GrowingFile> open(const std::filesystem::path& path);
  virtual ~GrowingFile() = default;

  virtual void writeAt(std::uint64_t place, std::span<const std::uint8_t> bytes) = 0;
  /// Brings what was written to the disk.
  virtual void flush() = 0;
  /// Leaves the file as it is where it cannot be cut.
  virtual void cutTo(std::uint64_t size) = 0;
};

/// Throws std::runtime_error unless files can be made in the folder.
void requireWritable(const std::filesystem::path& folder);

/// Moves what is at `current` to `aside`, and `next` in its place. Where that fails `current` is as before. Throws
/// std::filesystem::filesystem_error.
inline void replaceBySteps(const std::filesystem::path& current, const std::filesystem::path& next,
                           const std::filesystem::path& aside) {
  std::filesystem::rename(current, aside);
  try {
    std::filesystem::rename(next, current);
  } catch (...) {
    std::filesystem::rename(aside, current);
    throw;
  }
}

/// Puts the folder `next` in the place of `current`, in one step where the system can; the old one, if there was one,
/// is then at `next`. `begun` is a file that is there while this takes several steps, after which neither folder is
/// whole until the last. Throws std::filesystem::filesystem_error.
void exchange(const std::filesystem::path& current, const std::filesystem::path& next,
              const std::filesystem::path& begun);

}  // namespace sivray::content
