// SPDX-License-Identifier: GPL-3.0-or-later
#ifdef _WIN32
#define NOMINMAX
#include <shlobj.h>
#include <shlwapi.h>
#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/Files.h"
#include "platform/WideText.h"

namespace tesh::bramel::platform {
namespace {

HANDLE native(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

}  // namespace

NativePath::NativePath(const std::string& path) : nativeText(toWide(path)) {
  std::replace(nativeText.begin(), nativeText.end(), L'/', L'\\');
}

std::optional<InputFile> InputFile::open(const NativePath& path) {
  const HANDLE file = CreateFileW(path.text(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return std::nullopt;
  }
  return InputFile(reinterpret_cast<std::intptr_t>(file));
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
    CloseHandle(native(handle));
  }
}

std::int64_t InputFile::size() const {
  LARGE_INTEGER size{};
  return GetFileSizeEx(native(handle), &size) != 0 ? size.QuadPart : 0;
}

bool InputFile::seek(std::int64_t offset) {
  LARGE_INTEGER distance{};
  distance.QuadPart = offset;
  return offset >= 0 && SetFilePointerEx(native(handle), distance, nullptr, FILE_BEGIN) != 0;
}

std::size_t InputFile::read(void* destination, std::size_t count) {
  constexpr std::size_t kLongestRead = 1U << 30U;
  auto* out = static_cast<std::uint8_t*>(destination);
  std::size_t done = 0;
  while (done < count) {
    DWORD got = 0;
    const auto wanted = static_cast<DWORD>(std::min(count - done, kLongestRead));
    if (ReadFile(native(handle), out + done, wanted, &got, nullptr) == 0 || got == 0) {
      break;
    }
    done += got;
  }
  return done;
}

bool exists(const std::string& path) { return PathFileExistsW(NativePath(path).text()) != 0; }

bool writeAtomically(const std::string& path, std::span<const std::uint8_t> bytes) {
  const std::wstring target = NativePath(path).text();
  const std::wstring temporary = target + L".new";
  const HANDLE file =
      CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  DWORD written = 0;
  bool good = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
              written == bytes.size() && FlushFileBuffers(file) != 0;
  CloseHandle(file);
  good = good && MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
  if (!good) {
    DeleteFileW(temporary.c_str());
  }
  return good;
}

bool createFolders(const std::string& path) {
  const int result = SHCreateDirectoryExW(nullptr, NativePath(path).text(), nullptr);
  return result == ERROR_SUCCESS || result == ERROR_ALREADY_EXISTS || result == ERROR_FILE_EXISTS;
}

void warmPages(const std::string& path) { readWhole(path); }

}  // namespace tesh::bramel::platform
#endif
