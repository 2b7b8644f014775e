// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef _WIN32
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "platform/Files.h"

namespace tesh::bramel::platform {
namespace {

constexpr mode_t kUserFileMode = 0644;

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

}  // namespace

NativePath::NativePath(const std::string& path) : nativeText(path) {
  std::replace(nativeText.begin(), nativeText.end(), '\\', '/');
}

std::optional<InputFile> InputFile::open(const NativePath& path) {
  const int file = ::open(path.text(), O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    return std::nullopt;
  }
  struct stat info {};
  if (::fstat(file, &info) != 0 || S_ISDIR(info.st_mode)) {
    ::close(file);
    return std::nullopt;
  }
  return InputFile(file);
}

InputFile::InputFile(InputFile&& other) noexcept : handle(std::exchange(other.handle, kClosed)) {}

InputFile& InputFile::operator=(InputFile&& other) noexcept {
  if (this != &other) {
    close();
    handle = std::exchange(other.handle, kClosed);
  }
  return *this;
}

InputFile::~InputFile() { close(); }

void InputFile::close() {
  if (handle != kClosed) {
    ::close(descriptor(handle));
  }
}

std::int64_t InputFile::size() const {
  struct stat info {};
  return ::fstat(descriptor(handle), &info) == 0 ? static_cast<std::int64_t>(info.st_size) : 0;
}

bool InputFile::seek(std::int64_t offset) { return offset >= 0 && ::lseek(descriptor(handle), offset, SEEK_SET) >= 0; }

std::size_t InputFile::read(void* destination, std::size_t count) {
  auto* out = static_cast<std::uint8_t*>(destination);
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = ::read(descriptor(handle), out + done, count - done);
    if (got < 0 && errno == EINTR) {
      continue;
    }
    if (got <= 0) {
      break;
    }
    done += static_cast<std::size_t>(got);
  }
  return done;
}

std::string combinePath(const std::string& base, const std::string& relative) {
  const bool separated = base.back() == '/' || base.back() == '\\';
  return base + (separated ? "" : "\\") + relative;
}

bool exists(const std::string& path) { return ::access(NativePath(path).text(), F_OK) == 0; }

bool writeAtomically(const std::string& path, std::span<const std::uint8_t> bytes) {
  const std::string target = NativePath(path).text();
  std::string temporary = target + ".XXXXXX";
  const int file = ::mkstemp(temporary.data());
  if (file < 0) {
    return false;
  }
  bool good = ::fchmod(file, kUserFileMode) == 0 && writeAll(file, bytes);
  good = ::close(file) == 0 && good;
  good = good && std::rename(temporary.c_str(), target.c_str()) == 0;
  if (!good) {
    ::unlink(temporary.c_str());
  }
  return good;
}

bool createFolders(const std::string& path) {
  const std::filesystem::path folder = NativePath(path).text();
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  return std::filesystem::is_directory(folder, error);
}

void warmPages(const std::string& path) {
  const int file = ::open(NativePath(path).text(), O_RDONLY | O_CLOEXEC);
  if (file < 0) {
    return;
  }
  ::posix_fadvise(file, 0, 0, POSIX_FADV_WILLNEED);
  ::close(file);
}

}  // namespace tesh::bramel::platform
#endif
