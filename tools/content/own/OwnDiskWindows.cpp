// Windows cannot move a folder that holds an open file, so the files are moved one by one.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include "content/Files.h"
#include "content/own/OwnDisk.h"
#include "platform/WindowsApi.h"

namespace sivray::content {
namespace {

namespace fs = std::filesystem;

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void throwUnwritable(const fs::path& path) {
  const std::error_code reason(static_cast<int>(GetLastError()), std::system_category());
  throw std::runtime_error(textOf(path) + ": cannot be written: " + reason.message());
}

class Handle {
 public:
  explicit Handle(HANDLE opened) : handle(opened) {}
  ~Handle() { CloseHandle(handle); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE get() const { return handle; }

 private:
  HANDLE handle;
};

class WindowsLock final : public LockFile {
 public:
  explicit WindowsLock(HANDLE opened) : file(opened) {}

 private:
  Handle file;
};

class WindowsFile final : public GrowingFile {
 public:
  WindowsFile(HANDLE opened, fs::path itsPath) : file(opened), path(std::move(itsPath)) {}

  void writeAt(std::uint64_t place, std::span<const std::uint8_t> bytes) override {
    constexpr std::size_t kMost = std::size_t{1} << 30U;
    moveTo(place);
    while (!bytes.empty()) {
      DWORD written = 0;
      const auto some = static_cast<DWORD>(std::min(bytes.size(), kMost));
      if (WriteFile(file.get(), bytes.data(), some, &written, nullptr) == FALSE || written == 0) {
        throwUnwritable(path);
      }
      bytes = bytes.subspan(written);
    }
  }

  void flush() override {
    if (FlushFileBuffers(file.get()) == FALSE) {
      throwUnwritable(path);
    }
  }

  void cutTo(std::uint64_t size) override {
    moveTo(size);
    SetEndOfFile(file.get());
  }

 private:
  void moveTo(std::uint64_t place) {
    LARGE_INTEGER wanted{};
    wanted.QuadPart = static_cast<LONGLONG>(place);
    SetFilePointerEx(file.get(), wanted, nullptr, FILE_BEGIN);
  }

  Handle file;
  fs::path path;
};

/// Swaps one file of both folders; a reader that has it open keeps the old one.
void exchangeFile(const fs::path& current, const fs::path& next) {
  if (!fs::exists(current)) {
    fs::create_directories(current.parent_path());
    fs::rename(next, current);
    return;
  }
  replaceBySteps(current, next, fs::path(next) += ".old");
}

}  // namespace

std::unique_ptr<LockFile> LockFile::tryHold(const fs::path& path) {
  HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) {
    return std::make_unique<WindowsLock>(file);
  }
  if (GetLastError() != ERROR_SHARING_VIOLATION) {
    throwUnwritable(path.parent_path());
  }
  return nullptr;
}

std::unique_ptr<GrowingFile> GrowingFile::open(const fs::path& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    throwUnwritable(path);
  }
  return std::make_unique<WindowsFile>(file, path);
}

void requireWritable(const fs::path& folder) {
  const fs::path probe = folder / ".try";
  HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE, kShared, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    throwUnwritable(folder);
  }
  CloseHandle(file);
}

void exchange(const fs::path& current, const fs::path& next, const fs::path& begun) {
  std::error_code error;
  if (!fs::exists(current)) {
    fs::rename(next, current);
    return;
  }
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(next)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  std::ofstream(begun).close();
  for (const fs::path& file : files) {
    exchangeFile(current / file.lexically_relative(next), file);
  }
  fs::remove(begun, error);
}

}  // namespace sivray::content
#endif
