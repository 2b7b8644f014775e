// Reserves the range once; opening and closing change the access rights of its pages.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/AddressRange.h"

#include <new>

#include "platform/PageCalls.h"

namespace tesh::bramel::platform {

namespace {

/// Whether the system can currently reserve twice as many addresses.
bool areThereTwice(std::size_t bytes) {
  void* const both = newAddresses(2 * bytes);
  if (both != nullptr) {
    freePages(both, 2 * bytes);
  }
  return both != nullptr;
}

}  // namespace

std::size_t AddressRange::pageBytes() { return pageSize(); }

AddressRange::AddressRange(std::size_t mostBytes, std::size_t leastBytes) : byteCount(mostBytes) {
  for (;;) {
    const bool isLeast = byteCount / 2 < leastBytes;
    if (isLeast || areThereTwice(byteCount)) {
      start = static_cast<std::uint8_t*>(newAddresses(byteCount));
    }
    if (start != nullptr) {
      return;
    }
    if (isLeast) {
      throw std::bad_alloc();
    }
    byteCount /= 2;
  }
}

AddressRange::~AddressRange() { freePages(start, byteCount); }

bool AddressRange::open(std::size_t firstByte, std::size_t bytes) const { return openPages(start + firstByte, bytes); }

void AddressRange::close(std::size_t firstByte, std::size_t bytes) const { closePages(start + firstByte, bytes); }

void AddressRange::makePresent(std::size_t firstByte, std::size_t bytes) const {
  const auto first = reinterpret_cast<std::uintptr_t>(start) + firstByte;
  touchPages(first, first + bytes);
}

}  // namespace tesh::bramel::platform
