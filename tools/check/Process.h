// What this process uses: memory, threads, files, and the time of its thread.
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

/// Seconds that the calling thread has run.
double threadSeconds();

}  // namespace sivray::check
