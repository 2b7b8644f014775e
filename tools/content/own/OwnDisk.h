// Disk operations that the standard library does not offer; one source file for each system.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace sivray::content {

/// A lock file, held by one program at a time until the object ends.
class LockFile {
 public:
  /// Locks the file and creates it if it is missing. Returns null if another program holds it. Throws
  /// std::runtime_error if it cannot be opened.
  static std::unique_ptr<LockFile> tryHold(const std::filesystem::path& path);
  virtual ~LockFile() = default;
};

/// A file that is appended to while others read it.
class GrowingFile {
 public:
  /// Throws std::runtime_error, as do the other operations.
  static std::unique_ptr<GrowingFile> open(const std::filesystem::path& path);
  virtual ~GrowingFile() = default;

  virtual void writeAt(std::uint64_t place, std::span<const std::uint8_t> bytes) = 0;
  /// Waits until the written data is on the disk.
  virtual void flush() = 0;
  /// Leaves the file unchanged if it cannot be shortened.
  virtual void cutTo(std::uint64_t size) = 0;
};

/// Throws std::runtime_error if no file can be created in the folder.
void requireWritable(const std::filesystem::path& folder);

/// Renames `current` to `aside`, then `next` to `current`. If that fails, `current` is as before. Throws
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

/// Replaces the folder `current` by `next`; afterwards the old one, if any, is at `next`. One atomic step where the
/// system has it. Otherwise the file `begun` exists while the steps run; if it is found later, both folders may be
/// incomplete. Throws std::filesystem::filesystem_error.
void exchange(const std::filesystem::path& current, const std::filesystem::path& next,
              const std::filesystem::path& begun);

}  // namespace sivray::content
