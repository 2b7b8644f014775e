// A sample buffer between protected pages: a read or write outside it ends the program at once.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace sivray::check {

/// Which end of the samples touches a protected page.
enum class GuardedEnd { front, back };

class GuardedBuffer {
 public:
  GuardedBuffer(std::size_t samples, GuardedEnd end);
  ~GuardedBuffer();
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;

  float* data() { return first; }

 private:
  void* pages = nullptr;
  std::size_t bytes = 0;
  float* first = nullptr;
};

}  // namespace sivray::check
