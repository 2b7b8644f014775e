// Runs all checks in order and prints a line for each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/Check.h"

#include <array>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include "claphost/ClapLibrary.h"
#include "formhost/FormFile.h"
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
  if (isVst2()) {
    return std::make_unique<vsthost::PluginLibrary>(formPath);
  }
  if (form == hosting::Form::clap) {
    return std::make_unique<claphost::ClapLibrary>(formPath, parameterNames);
  }
  return std::make_unique<formhost::FormFile>(form, formPath, parameterNames);
}

std::unique_ptr<hosting::PluginFile> CheckSettings::loadVst2() const {
  return std::make_unique<vsthost::PluginLibrary>(libraryPath);
}

std::string CheckSettings::moduleName() const {
  const std::filesystem::path path(formPath);
  std::string name = (path.has_filename() ? path : path.parent_path()).filename().string();
  name.insert(name.begin(), '/');
  return name;
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

int runChecks(CheckSettings settings) {
  using Clock = std::chrono::steady_clock;
  vsthost::shareContentOf(settings.libraryPath);
  if (isSanitized()) {
    std::puts("note: a sanitizer runs this program, so that times, memory and calls of the system are not judged");
  }
  if (!settings.isVst2()) {
    const auto library = settings.loadVst2();
    const auto plugin = library->makeInstance();
    for (int index = 0; index < plugin->parameterCount(); ++index) {
      settings.parameterNames.push_back(plugin->parameterName(index));
    }
  }
  const auto start = Clock::now();
  int failed = 0;
  int notRun = 0;
  int count = 0;
  for (const auto& group : {lifecycleChecks(), audioChecks(), eventChecks(), parameterChecks(), stateChecks(),
                            threadChecks(), realTimeChecks(), formChecks(), costChecks(), editorChecks()}) {
    for (const Check& check : group) {
      if (!isFor(check, settings)) {
        continue;
      }
      const auto before = Clock::now();
      const Verdict result = run(check, settings);
      std::printf("%s %s: %s (%.1f s)\n", markOf(result), check.name, result.figure.c_str(),
                  std::chrono::duration<double>(Clock::now() - before).count());
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
