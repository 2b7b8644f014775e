// Runs all checks in order and prints a line for each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Check.h"

#include <array>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <exception>

#include "vsthost/PluginLibrary.h"

namespace sivray::check {

Verdict verdict(bool passed, const char* format, ...) {
  std::array<char, 400> text{};
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  return {passed, text.data()};
}

namespace {

Verdict run(const Check& check, const CheckSettings& settings) {
  try {
    return check.body(settings);
  } catch (const std::exception& error) {
    return {false, error.what()};
  }
}

}  // namespace

int runChecks(const CheckSettings& settings) {
  using Clock = std::chrono::steady_clock;
  vsthost::shareContentOf(settings.libraryPath);
  if (isSanitized()) {
    std::puts("note: a sanitizer runs this program, so that times, memory and calls of the system are not judged");
  }
  const auto start = Clock::now();
  int failed = 0;
  int count = 0;
  for (const auto& group : {lifecycleChecks(), audioChecks(), eventChecks(), parameterChecks(), stateChecks(),
                            threadChecks(), realTimeChecks()}) {
    for (const Check& check : group) {
      const Verdict result = run(check, settings);
      std::printf("%s %s: %s\n", result.passed ? "ok  " : "FAIL", check.name, result.figure.c_str());
      std::fflush(stdout);
      failed += result.passed ? 0 : 1;
      ++count;
    }
  }
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  std::printf("%d of %d checks passed in %.0f s\n", count - failed, count, seconds);
  return failed;
}

}  // namespace sivray::check
