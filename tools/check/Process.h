// This process's memory, threads and open files, and the CPU time of a thread.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace sivray::check {

struct ProcessUse {
  std::int64_t residentKiB = 0;
  int threads = 0;
  int files = 0;
};

ProcessUse processUse();

/// Returns the CPU seconds that the calling thread has used.
double threadSeconds();

}  // namespace sivray::check
