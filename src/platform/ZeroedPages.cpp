// Takes pages directly from the system: the C library's allocator clears memory that it reuses, which provides all of
// its pages.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ZeroedPages.h"

#include <cstdint>
#include <new>
#include <utility>

#include "platform/PageCalls.h"

namespace tesh::bramel::platform {

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

}  // namespace tesh::bramel::platform
