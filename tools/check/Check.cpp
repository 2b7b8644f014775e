// Runs all checks in order and prints a line for each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Check.h"

#include <array>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <string_view>

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

std::unique_ptr<hosting::PluginFile> CheckSettings::load() const {
  return std::make_unique<vsthost::PluginLibrary>(formPath);
}

namespace {

bool isFor(const Check& check, const CheckSettings& settings) {
  if (std::string_view(check.name).find(settings.only) == std::string_view::npos) {
    return false;
  }
  return check.forms == CheckedForms::all || (check.forms == CheckedForms::vst2) == settings.isVst2();
}

Verdict run(const Check& check, const CheckSettings& settings) {
  try {
    return check.body(settings);
  } catch (const std::exception& error) {
    return {false, error.what()};
  }
}

const char* markOf(const Verdict& verdict) {
  if (!verdict.wasRun) {
    return "----";
  }
  return verdict.passed ? "ok  " : "FAIL";
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
  int notRun = 0;
  int count = 0;
  for (const auto& group : {lifecycleChecks(), audioChecks(), eventChecks(), parameterChecks(), stateChecks(),
                            threadChecks(), realTimeChecks(), editorChecks()}) {
    for (const Check& check : group) {
      if (!isFor(check, settings)) {
        continue;
      }
      const Verdict result = run(check, settings);
      std::printf("%s %s: %s\n", markOf(result), check.name, result.figure.c_str());
      std::fflush(stdout);
      failed += result.passed || !result.wasRun ? 0 : 1;
      notRun += result.wasRun ? 0 : 1;
      ++count;
    }
  }
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  std::printf("%d of %d checks passed in %.0f s, %d failed, %d not run\n", count - failed - notRun, count, seconds,
              failed, notRun);
  return failed;
}

}  // namespace sivray::check
