// Locks of folders: on Windows a mutex with the folder's name, elsewhere the lock that the system keeps for a folder.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/FolderLock.h"

#include "platform/Files.h"

#ifdef _WIN32
#include <algorithm>

#include "platform/WindowsApi.h"

namespace tesh::bramel::platform {
namespace {

/// A mutex of the user's session. Its name may not have backslashes nor 260 characters; folders differ at their ends.
HANDLE mutexOf(const std::string& folder) {
  constexpr std::size_t kMostLetters = 200;
  std::wstring name = NativePath(folder).text();
  name.erase(0, name.size() - std::min(name.size(), kMostLetters));
  std::replace(name.begin(), name.end(), L'\\', L'/');
  return CreateMutexW(nullptr, FALSE, (L"Local\\Sivray " + name).c_str());
}

}  // namespace

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds longest) {
  HANDLE mutex = mutexOf(folder);
  if (mutex == nullptr) {
    return;
  }
  const DWORD result = WaitForSingleObject(mutex, static_cast<DWORD>(longest.count()));
  if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) {
    handle = reinterpret_cast<std::intptr_t>(mutex);
  } else {
    CloseHandle(mutex);
  }
}

FolderLock::~FolderLock() {
  if (isHeld()) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a Windows handle is a number of pointer type.
    HANDLE mutex = reinterpret_cast<HANDLE>(handle);
    ReleaseMutex(mutex);
    CloseHandle(mutex);
  }
}

}  // namespace tesh::bramel::platform

#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace tesh::bramel::platform {

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds longest) {
  constexpr std::chrono::milliseconds kPause{2};
  const int descriptor = ::open(NativePath(folder).text(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) {
    return;
  }
  const auto end = std::chrono::steady_clock::now() + longest;
  while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
    const bool isTaken = errno == EWOULDBLOCK || errno == EINTR;
    if (!isTaken || std::chrono::steady_clock::now() >= end) {
      ::close(descriptor);
      return;
    }
    std::this_thread::sleep_for(kPause);
  }
  handle = descriptor;
}

FolderLock::~FolderLock() {
  if (isHeld()) {
    const int descriptor = static_cast<int>(handle);
    ::flock(descriptor, LOCK_UN);  // A child of the process may hold the descriptor open.
    ::close(descriptor);
  }
}

}  // namespace tesh::bramel::platform

#endif
