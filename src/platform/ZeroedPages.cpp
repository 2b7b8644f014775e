// Pages straight from the system, because the allocator of the C library clears memory that it has had before, and
// thereby takes it.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ZeroedPages.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#ifdef _WIN32
#include "platform/WindowsApi.h"
#else
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace tesh::bramel::platform {
namespace {

#ifdef _WIN32

void* newPages(std::size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE); }

void freePages(void* start, std::size_t) { VirtualFree(start, 0, MEM_RELEASE); }

std::uintptr_t pageSize() { return 4096; }

/// Windows has no shared page of zeros, so that a read is enough.
void touchPages(std::uintptr_t first, std::uintptr_t end) {
  for (std::uintptr_t page = first & ~(pageSize() - 1); page < end; page += pageSize()) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): pages are counted by their addresses.
    static_cast<void>(*reinterpret_cast<const volatile std::uint8_t*>(page));
  }
}

/// Pages that were given up might not come back if the system runs out of memory, so all stay and are filled.
bool exchangePages(void*, std::size_t) { return false; }

#else

std::uintptr_t pageSize() { return static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE)); }

/// Huge pages would be provided whole, 2 MiB for the first byte.
void* newPages(std::size_t bytes) {
  void* const start = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (start == MAP_FAILED) {
    return nullptr;
  }
#ifdef MADV_NOHUGEPAGE
  ::madvise(start, bytes, MADV_NOHUGEPAGE);
#endif
  return start;
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

bool exchangePages(void* start, std::size_t bytes) { return ::madvise(start, bytes, MADV_DONTNEED) == 0; }

#endif

}  // namespace

void* takePages(std::size_t byteCount) {
  void* const start = newPages(byteCount);
  if (start == nullptr) {
    throw std::bad_alloc();
  }
  return start;
}

void returnPages(void* start, std::size_t byteCount) { freePages(start, byteCount); }

ZeroedPages::ZeroedPages(std::size_t byteCount)
    : start(byteCount == 0 ? nullptr : takePages(byteCount)), size(byteCount) {}

ZeroedPages::~ZeroedPages() {
  if (start != nullptr) {
    returnPages(start, size);
  }
}

ZeroedPages::ZeroedPages(ZeroedPages&& other) noexcept
    : start(std::exchange(other.start, nullptr)), size(std::exchange(other.size, 0)) {}

ZeroedPages& ZeroedPages::operator=(ZeroedPages&& other) noexcept {
  std::swap(start, other.start);
  std::swap(size, other.size);
  return *this;
}

void ZeroedPages::makePresent(std::size_t firstByte, std::size_t byteCount) const {
  if (firstByte >= size || byteCount == 0) {
    return;
  }
  const auto base = reinterpret_cast<std::uintptr_t>(start);
  touchPages(base + firstByte, base + (byteCount < size - firstByte ? firstByte + byteCount : size));
}

void ZeroedPages::clear(std::size_t firstByte, std::size_t byteCount) const {
  const std::size_t end = std::min(firstByte + byteCount, size);
  if (firstByte >= end) {
    return;
  }
  // Pages that lie in the stretch as a whole are exchanged for new ones.
  auto* const bytes = static_cast<std::uint8_t*>(start);
  const std::size_t page = pageSize();
  const std::size_t firstPage = std::min((firstByte + page - 1) / page * page, end);
  const std::size_t lastPage = std::max(end / page * page, firstPage);
  const bool isExchanged = firstPage < lastPage && exchangePages(bytes + firstPage, lastPage - firstPage);
  std::fill(bytes + firstByte, bytes + firstPage, std::uint8_t{0});
  std::fill(bytes + (isExchanged ? lastPage : firstPage), bytes + end, std::uint8_t{0});
}

}  // namespace tesh::bramel::platform
