// Files by POSIX calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/Files.h"

namespace tesh::bramel::platform {
namespace {

namespace fs = std::filesystem;

/// Permissions of a new file, before the process's mask removes some.
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kPermissionBits = 07777;

/// The longest chain of symbolic links that is followed, as on Linux. A longer one counts as a loop.
constexpr int kMostLinks = 40;

/// How many temporary files a write skips that crashed processes with the same process number left behind.
constexpr int kMostLeftOver = 1000;

int descriptor(std::intptr_t handle) { return static_cast<int>(handle); }

bool writeAll(int file, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return false;
    }
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return ::fsync(file) == 0;
}

/// Calls `read(destination, count)` until `count` bytes are read, the file ends, or an error occurs. Returns the number
/// of bytes, or nothing if the call would have to wait.
template <typename Read>
std::optional<std::size_t> readAll(void* destination, std::size_t count, Read read) {
  auto* out = static_cast<std::uint8_t*>(destination);
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = read(out + done, count - done);
    if (got < 0 && errno == EINTR) {
      continue;
    }
    if (got < 0 && errno == EAGAIN) {
      return std::nullopt;
    }
    if (got <= 0) {
      break;
    }
    done += static_cast<std::size_t>(got);
  }
  return done;
}

/// The file at the end of the chain of symbolic links from `path`, whether it exists or not; nothing for a loop.
std::optional<fs::path> linkTarget(fs::path path) {
  for (int i = 0; i < kMostLinks; ++i) {
    std::error_code error;
    const fs::path next = fs::read_symlink(path, error);
    if (error) {
      return path;
    }
    path = path.parent_path() / next;
  }
  return std::nullopt;
}

/// Creates an empty file beside `target` with a unique `name`. Returns its descriptor, or -1.
int createBeside(const std::string& target, std::string& name) {
  static std::atomic<unsigned> count{0};
  for (int attempt = 0; attempt < kMostLeftOver; ++attempt) {
    name = target + '.' + std::to_string(::getpid()) + '.' + std::to_string(count++);
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
    if (file >= 0 || errno != EEXIST) {
      return file;
    }
  }
  return -1;
}

}  // namespace

NativePath::NativePath(const std::string& path) : nativeText(path) {
  std::replace(nativeText.begin(), nativeText.end(), '\\', '/');
}

std::string NativePath::shown() const { return nativeText; }

NativePath NativePath::chosen(const std::string& path) {
  NativePath turned(path);
  std::error_code error;
  const bool hasFolder = fs::is_directory(fs::path(turned.nativeText).parent_path(), error);
  if (::access(path.c_str(), F_OK) != 0 && hasFolder) {
    return turned;
  }
  NativePath asWritten;
  asWritten.nativeText = path;
  return asWritten;
}

std::optional<InputFile> InputFile::open(const NativePath& path) {
  const int file = ::open(path.text(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) {
    return std::nullopt;
  }
  struct stat info {};
  if (::fstat(file, &info) != 0 || !S_ISREG(info.st_mode)) {
    ::close(file);
    return std::nullopt;
  }
  return InputFile(file);
}

void InputFile::close() {
  if (handle != kClosed) {
    ::close(descriptor(handle));
  }
}

std::int64_t InputFile::size() const {
  struct stat info {};
  return ::fstat(descriptor(handle), &info) == 0 ? static_cast<std::int64_t>(info.st_size) : 0;
}

std::optional<FileVersion> InputFile::version() const {
  struct stat info {};
  if (::fstat(descriptor(handle), &info) != 0) {
    return std::nullopt;
  }
  const auto word = [](auto number) { return static_cast<std::uint64_t>(number); };
  return FileVersion{{word(info.st_dev), word(info.st_ino), word(info.st_size), word(info.st_mtim.tv_sec),
                      word(info.st_mtim.tv_nsec), word(info.st_ctim.tv_sec), word(info.st_ctim.tv_nsec)}};
}

bool InputFile::seek(std::int64_t offset) { return offset >= 0 && ::lseek(descriptor(handle), offset, SEEK_SET) >= 0; }

std::size_t InputFile::read(void* destination, std::size_t count) {
  const auto system = [this](void* to, std::size_t most) { return ::read(descriptor(handle), to, most); };
  return readAll(destination, count, system).value_or(0);
}

std::optional<std::size_t> InputFile::readCached(void* destination, std::size_t count) {
#ifdef RWF_NOWAIT
  return readAll(destination, count, [this](void* to, std::size_t most) {
    constexpr off_t kHere = -1;
    const iovec piece{to, most};
    const ssize_t got = ::preadv2(descriptor(handle), &piece, 1, kHere, RWF_NOWAIT);
    // Kernels and file systems that do not know the flag report different errors.
    const bool isUnknown = got < 0 && errno != EAGAIN && errno != EINTR;
    return isUnknown ? ::read(descriptor(handle), to, most) : got;
  });
#else
  return read(destination, count);
#endif
}

void InputFile::expect(std::int64_t offset, std::int64_t count) const {
  // Linux reads at most the device's read-ahead for each request, even if the request is longer. This is the usual
  // value.
  constexpr std::int64_t kStep = 128 << 10;
  for (std::int64_t done = 0; done < count; done += kStep) {
    ::posix_fadvise(descriptor(handle), offset + done, std::min(kStep, count - done), POSIX_FADV_WILLNEED);
  }
}

std::string combinePath(const std::string& base, const std::string& relative) {
  const bool separated = base.back() == '/' || base.back() == '\\';
  return base + (separated ? "" : "\\") + relative;
}

bool exists(const NativePath& path) { return ::access(path.text(), F_OK) == 0; }

bool writeAtomically(const NativePath& path, std::span<const std::uint8_t> bytes) {
  const std::optional<fs::path> target = linkTarget(path.text());
  struct stat old {};
  const bool exists = target && ::stat(target->c_str(), &old) == 0;
  if (!target || target->empty() || (exists && !S_ISREG(old.st_mode))) {
    return false;
  }
  std::string temporary;
  const int file = createBeside(target->string(), temporary);
  if (file < 0) {
    return false;
  }
  bool good = !exists || ::fchmod(file, old.st_mode & kPermissionBits) == 0;
  good = good && writeAll(file, bytes);
  good = ::close(file) == 0 && good;
  good = good && std::rename(temporary.c_str(), target->c_str()) == 0;
  if (!good) {
    ::unlink(temporary.c_str());
  }
  return good;
}

bool createFolders(const std::string& path) {
  const fs::path folder = NativePath(path).text();
  std::error_code error;
  fs::create_directories(folder, error);
  return fs::is_directory(folder, error);
}

void warmPages(const std::string& path) {
  if (const std::optional<InputFile> file = InputFile::open(path)) {
    file->expect(0, file->size());
  }
}

}  // namespace tesh::bramel::platform
#endif
