// The system calls for memory pages.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/PageCalls.h"

#include <cstring>

#ifdef _WIN32
#include "platform/WindowsApi.h"
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace tesh::bramel::platform {

#ifdef _WIN32

void* newPages(std::size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE); }

void freePages(void* start, std::size_t) { VirtualFree(start, 0, MEM_RELEASE); }

std::uintptr_t pageSize() { return 4096; }

void* newAddresses(std::size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS); }

bool openPages(void* start, std::size_t bytes) {
  return VirtualAlloc(start, bytes, MEM_COMMIT, PAGE_READWRITE) != nullptr;
}

void closePages(void* start, std::size_t bytes) { VirtualFree(start, bytes, MEM_DECOMMIT); }

// Windows has no shared zero page, so reading a page is enough to provide it.
void touchPages(std::uintptr_t first, std::uintptr_t end) {
  for (std::uintptr_t page = first & ~(pageSize() - 1); page < end; page += pageSize()) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): pages are counted by their addresses.
    static_cast<void>(*reinterpret_cast<const volatile std::uint8_t*>(page));
  }
}

#else

std::uintptr_t pageSize() { return static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE)); }

namespace {

constexpr int kOwnMemory = MAP_PRIVATE | MAP_ANONYMOUS;

/// With huge pages the system would provide 2 MiB for the first byte.
void refuseHugePages(void* start, std::size_t bytes) {
#ifdef MADV_NOHUGEPAGE
  ::madvise(start, bytes, MADV_NOHUGEPAGE);
#else
  static_cast<void>(start);
  static_cast<void>(bytes);
#endif
}

}  // namespace

void* newPages(std::size_t bytes) {
  void* const start = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, kOwnMemory, -1, 0);
  if (start == MAP_FAILED) {
    return nullptr;
  }
  refuseHugePages(start, bytes);
  return start;
}

// Memory without access does not count towards limits of memory.
void* newAddresses(std::size_t bytes) {
  void* const start = ::mmap(nullptr, bytes, PROT_NONE, kOwnMemory, -1, 0);
  if (start == MAP_FAILED) {
    return nullptr;
  }
  refuseHugePages(start, bytes);
  return start;
}

bool openPages(void* start, std::size_t bytes) { return ::mprotect(start, bytes, PROT_READ | PROT_WRITE) == 0; }

// A new mapping over the old one also frees pages that the process has locked.
void closePages(void* start, std::size_t bytes) {
  if (::mmap(start, bytes, PROT_NONE, kOwnMemory | MAP_FIXED, -1, 0) == MAP_FAILED) {
    std::memset(start, 0, bytes);
  } else {
    refuseHugePages(start, bytes);
  }
}

void freePages(void* start, std::size_t bytes) { ::munmap(start, bytes); }

void touchPages(std::uintptr_t first, std::uintptr_t end) {
#ifdef MADV_POPULATE_WRITE
  const std::uintptr_t start = first & ~(pageSize() - 1);
  ::madvise(reinterpret_cast<void*>(start), end - start, MADV_POPULATE_WRITE);  // NOLINT(performance-no-int-to-ptr)
#else
  static_cast<void>(first);
  static_cast<void>(end);
#endif
}

#endif

}  // namespace tesh::bramel::platform
