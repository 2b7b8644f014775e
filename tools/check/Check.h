// A check of the plug-in: a name, and a function that drives the plug-in and returns a verdict with a figure.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SIVRAY_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(realtime_sanitizer)
#define SIVRAY_SANITIZED 1
#endif
#endif
#ifndef SIVRAY_SANITIZED
#define SIVRAY_SANITIZED 0
#endif

namespace sivray::check {

/// The library to check, and how much to do.
struct CheckSettings {
  std::string libraryPath;
  bool full = false;       ///< Full repetitions, which take minutes; otherwise about half a minute in all.
  double soakHours = 0.0;  ///< Hours of audio in the long rendering; 0 for its default of minutes.

  /// Returns the number of repetitions: `complete` in a full run, else `bounded`.
  int count(int bounded, int complete) const { return full ? complete : bounded; }
};

struct Verdict {
  bool passed = false;
  std::string figure;
  bool wasRun = true;  ///< Otherwise `figure` says what is lacking here.
};

struct Check {
  const char* name;
  Verdict (*body)(const CheckSettings& settings);
};

/// Returns a verdict whose figure is formatted as by printf.
[[gnu::format(printf, 2, 3)]] Verdict verdict(bool passed, const char* format, ...);

/// Whether a sanitizer is built in; times, memory use and replaced system functions are then meaningless.
constexpr bool isSanitized() { return SIVRAY_SANITIZED != 0; }

/// The checks by subject, in the order in which they run.
std::vector<Check> lifecycleChecks();
std::vector<Check> audioChecks();
std::vector<Check> eventChecks();
std::vector<Check> parameterChecks();
std::vector<Check> stateChecks();
std::vector<Check> threadChecks();
std::vector<Check> realTimeChecks();
/// Not run where there is no X server, and none can be started.
std::vector<Check> editorChecks();

/// Runs every check and prints a line for each. Returns the number that failed; one that cannot run here has not
/// failed. Throws HostError when the plug-in cannot be loaded at all.
int runChecks(const CheckSettings& settings);

}  // namespace sivray::check
