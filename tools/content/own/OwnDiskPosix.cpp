// Locks, writes and renames by POSIX functions.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "content/Files.h"
#include "content/own/OwnDisk.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void throwUnwritable(const fs::path& path) {
  throw std::runtime_error(textOf(path) + ": cannot be written: " + std::strerror(errno));
}

class PosixLock final : public LockFile {
 public:
  explicit PosixLock(int opened) : handle(opened) {}
  ~PosixLock() override { ::close(handle); }
  PosixLock(const PosixLock&) = delete;
  PosixLock& operator=(const PosixLock&) = delete;

 private:
  int handle;
};

class PosixFile final : public GrowingFile {
 public:
  PosixFile(int opened, fs::path itsPath) : handle(opened), path(std::move(itsPath)) {}
  ~PosixFile() override { ::close(handle); }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  void writeAt(std::uint64_t place, std::span<const std::uint8_t> bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::pwrite(handle, bytes.data(), bytes.size(), static_cast<off_t>(place));
      if (written < 0 && errno == EINTR) {
        continue;
      }
      if (written <= 0) {
        throwUnwritable(path);
      }
      place += static_cast<std::uint64_t>(written);
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
  }

  void flush() override {
    if (::fdatasync(handle) != 0) {
      throwUnwritable(path);
    }
  }

  void cutTo(std::uint64_t size) override {
    [[maybe_unused]] const bool isCut = ::ftruncate(handle, static_cast<off_t>(size)) == 0;
  }

 private:
  int handle;
  fs::path path;
};

}  // namespace

std::unique_ptr<LockFile> LockFile::tryHold(const fs::path& path) {
  const int handle = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (handle < 0) {
    throwUnwritable(path.parent_path());
  }
  if (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
    ::close(handle);
    return nullptr;
  }
  return std::make_unique<PosixLock>(handle);
}

std::unique_ptr<GrowingFile> GrowingFile::open(const fs::path& path) {
  const int handle = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (handle < 0) {
    throwUnwritable(path);
  }
  return std::make_unique<PosixFile>(handle, path);
}

void requireWritable(const fs::path& folder) {
  if (::access(folder.c_str(), W_OK) != 0) {
    throwUnwritable(folder);
  }
}

void exchange(const fs::path& current, const fs::path& next, const fs::path& /*begun*/) {
  if (!fs::exists(current)) {
    fs::rename(next, current);
    return;
  }
#ifdef RENAME_EXCHANGE
  if (::renameat2(AT_FDCWD, current.c_str(), AT_FDCWD, next.c_str(), RENAME_EXCHANGE) == 0) {
    return;
  }
#endif
  const fs::path aside = fs::path(current) += ".old";
  fs::remove_all(aside);
  replaceBySteps(current, next, aside);
  fs::rename(aside, next);
}

}  // namespace sivray::content
#endif
