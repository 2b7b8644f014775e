// The main function of benchmarks that play the factory content.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <stdexcept>

namespace support {

/// Runs the program's benchmarks. Returns 1, with a line on standard error, if the content is missing.
inline int runOnContent(const char* program, int argc, char** argv) {
  try {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::runtime_error& error) {
    std::fprintf(stderr, "%s: no content (%s): set BRAMEL_COMMON_FILES to a built Sivray folder\n", program,
                 error.what());
    return 1;
  }
  return 0;
}

}  // namespace support
