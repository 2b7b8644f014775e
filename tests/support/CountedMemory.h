// Counts the allocations and releases of each thread of a test program by replacing its operators new and delete. Only
// one source file of a program may include it, and that file holds all tests that count.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Sanitizers have their own operators, which cannot be replaced or must not be mixed with these.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer) || __has_feature(address_sanitizer)
#define SIVRAY_FIXED_OPERATORS
#endif
#endif

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <cstdlib>
#include <new>

namespace support {

inline thread_local int memoryCallCount = 0;

/// Returns the number of allocations and releases of the calling thread so far.
inline int memoryCalls() { return memoryCallCount; }

}  // namespace support

[[gnu::noinline]] void* operator new(std::size_t size) {
  ++support::memoryCallCount;
  if (void* const memory = std::malloc(size)) {
    return memory;
  }
  throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
  ++support::memoryCallCount;
  std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
  ++support::memoryCallCount;
  std::free(memory);
}

#endif
