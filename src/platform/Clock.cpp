// The monotonic clock of each operating system.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Clock.h"

#ifdef _WIN32
#include "platform/WindowsApi.h"
#else
#include <ctime>
#endif

namespace tesh::bramel::platform {

namespace {

constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

}  // namespace

#ifdef _WIN32

/// Converts seconds and fraction separately, because the whole count times 10^9 would overflow within hours.
std::int64_t monotonicNanoseconds() {
  LARGE_INTEGER frequency;
  LARGE_INTEGER counter;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&counter);
  const std::int64_t seconds = counter.QuadPart / frequency.QuadPart;
  const std::int64_t rest = counter.QuadPart % frequency.QuadPart;
  return seconds * kNanosecondsPerSecond + rest * kNanosecondsPerSecond / frequency.QuadPart;
}

#else

std::int64_t monotonicNanoseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::int64_t>(now.tv_sec) * kNanosecondsPerSecond + now.tv_nsec;
}

#endif

}  // namespace tesh::bramel::platform
