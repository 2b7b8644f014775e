// Files by Windows calls.
// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#include "platform/WindowsApi.h"

// These headers need the declarations above.
#include <shlobj.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>

#include "platform/Files.h"
#include "platform/WideText.h"

namespace tesh::bramel::platform {
namespace {

/// Most bytes per call, whose count has 32 bits.
constexpr std::size_t kLongestTransfer = 1U << 30U;

// A Windows handle is a number of pointer type.
// NOLINTNEXTLINE(performance-no-int-to-ptr)
HANDLE native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

bool writeAll(HANDLE file, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLongestTransfer));
    DWORD written = 0;
    if (WriteFile(file, bytes.data(), wanted, &written, nullptr) == 0 || written == 0) {
      return false;
    }
    bytes = bytes.subspan(written);
  }
  return FlushFileBuffers(file) != 0;
}

/// The target of a symbolic link; `path` itself if there is no such file.
std::wstring linkTarget(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return path;
  }
  std::wstring target(kLongestPath, L'\0');
  const DWORD size = GetFinalPathNameByHandleW(file, target.data(), kLongestPath, FILE_NAME_NORMALIZED);
  CloseHandle(file);
  target.resize(size < kLongestPath ? size : 0);
  return target.empty() ? path : target;
}

/// A unique name beside the target, across all processes and threads.
std::wstring temporaryBeside(const std::wstring& target) {
  return target + L'.' + std::to_wstring(GetCurrentProcessId()) + L'.' + std::to_wstring(GetCurrentThreadId());
}

/// Attributes that the user sees or has set; the others describe how the system stores a file.
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

/// Renames `source` to `target`. An existing file is replaced, but keeps its owner, rights and time of creation if the
/// file system supports them.
bool renameOver(const std::wstring& source, const std::wstring& target) {
  constexpr DWORD kFlags = REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS;
  if (ReplaceFileW(target.c_str(), source.c_str(), nullptr, kFlags, nullptr, nullptr) != 0) {
    return true;
  }
  const DWORD reason = GetLastError();
  if (reason == ERROR_ACCESS_DENIED || reason == ERROR_SHARING_VIOLATION || reason == ERROR_UNABLE_TO_REMOVE_REPLACED) {
    return false;
  }
  // The target does not exist, or is on a file system that can only rename.
  return MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

}  // namespace

NativePath::NativePath(const std::string& path) : nativeText(toWide(path)) {
  std::replace(nativeText.begin(), nativeText.end(), L'/', L'\\');
}

std::string NativePath::shown() const { return toUtf8(nativeText); }

NativePath NativePath::chosen(const std::string& path) { return NativePath(path); }

std::optional<InputFile> InputFile::open(const NativePath& path) {
  const HANDLE file = CreateFileW(path.text(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return std::nullopt;
  }
  if (GetFileType(file) != FILE_TYPE_DISK) {
    CloseHandle(file);
    return std::nullopt;
  }
  return InputFile(reinterpret_cast<std::intptr_t>(file));
}

void InputFile::close() {
  if (handle != kClosed) {
    CloseHandle(native(handle));
  }
}

std::int64_t InputFile::size() const {
  LARGE_INTEGER size{};
  return GetFileSizeEx(native(handle), &size) != 0 ? size.QuadPart : 0;
}

std::optional<FileVersion> InputFile::version() const {
  BY_HANDLE_FILE_INFORMATION info{};
  if (GetFileInformationByHandle(native(handle), &info) == 0) {
    return std::nullopt;
  }
  return FileVersion{{info.dwVolumeSerialNumber, info.nFileIndexHigh, info.nFileIndexLow, info.nFileSizeHigh,
                      info.nFileSizeLow, info.ftLastWriteTime.dwHighDateTime, info.ftLastWriteTime.dwLowDateTime}};
}

bool InputFile::seek(std::int64_t offset) {
  LARGE_INTEGER distance{};
  distance.QuadPart = offset;
  return offset >= 0 && SetFilePointerEx(native(handle), distance, nullptr, FILE_BEGIN) != 0;
}

std::size_t InputFile::read(void* destination, std::size_t count) {
  auto* out = static_cast<std::uint8_t*>(destination);
  std::size_t done = 0;
  while (done < count) {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(count - done, kLongestTransfer));
    if (ReadFile(native(handle), out + done, wanted, &got, nullptr) == 0 || got == 0) {
      break;
    }
    done += got;
  }
  return done;
}

std::optional<std::size_t> InputFile::readCached(void* destination, std::size_t count) {
  return read(destination, count);
}

void InputFile::expect(std::int64_t, std::int64_t) const {}

std::string combinePath(const std::string& base, const std::string& relative) {
  std::array<wchar_t, MAX_PATH> joined{};
  const wchar_t* const path = PathCombineW(joined.data(), toWide(base).c_str(), toWide(relative).c_str());
  return path == nullptr ? std::string() : toUtf8(path);
}

bool exists(const NativePath& path) { return PathFileExistsW(path.text()) != 0; }

bool writeAtomically(const NativePath& path, std::span<const std::uint8_t> bytes) {
  const std::wstring target = linkTarget(path.text());
  const DWORD old = GetFileAttributesW(target.c_str());
  const bool exists = old != INVALID_FILE_ATTRIBUTES;
  if (target.empty() || (exists && (old & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0)) {
    return false;
  }
  const std::wstring temporary = temporaryBeside(target);
  const DWORD attributes = exists ? old & kKeptAttributes : 0;
  const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  bool good = writeAll(file, bytes);
  good = CloseHandle(file) != 0 && good;
  good = good && renameOver(temporary, target);
  if (!good) {
    DeleteFileW(temporary.c_str());
  }
  return good;
}

bool createFolders(const std::string& path) {
  const NativePath folder(path);
  SHCreateDirectoryExW(nullptr, folder.text(), nullptr);
  return PathIsDirectoryW(folder.text()) != FALSE;
}

/// Reads the file once, which leaves it in the system's cache.
void warmPages(const std::string& path) {
  std::optional<InputFile> file = InputFile::open(path);
  std::array<std::uint8_t, 1U << 16U> bytes;
  while (file && file->read(bytes.data(), bytes.size()) == bytes.size()) {
  }
}

}  // namespace tesh::bramel::platform
#endif
