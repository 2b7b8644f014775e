// Counts every call for memory of a test program. Replaces the program's operators: one source file of a program may
// include it, and holds all that counts.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The sanitizers bring their own operators, which cannot be replaced or must not be mixed with ours.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer) || __has_feature(address_sanitizer)
#define SIVRAY_FIXED_OPERATORS
#endif
#endif

#if !defined(SIVRAY_FIXED_OPERATORS)

#include <atomic>
#include <cstdlib>
#include <new>

namespace support {

inline std::atomic<int> memoryCallCount{0};

/// How often memory was asked for or given back.
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
