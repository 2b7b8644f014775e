// SPDX-License-Identifier: GPL-3.0-or-later
#include "CountedMemory.h"

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> calls{0};

}  // namespace

int memoryCalls() { return calls; }

void* operator new(std::size_t size) {
  ++calls;
  if (void* const memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  ++calls;
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  ++calls;
  std::free(memory);
}

#endif
