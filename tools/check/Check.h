// A check of the plug-in: a name, and a function that drives the plug-in and returns a verdict with a figure.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "hosting/HostedPlugin.h"

#ifndef SIVRAY_SANITIZED
#define SIVRAY_SANITIZED 0  // The build defines it where a sanitizer is built in.
#endif

namespace sivray::check {

/// Whether a sanitizer is built in; times, memory use and replaced system functions are then meaningless.
constexpr bool isSanitized() { return SIVRAY_SANITIZED != 0; }

/// What to check, and how much to do.
struct CheckSettings {
  hosting::Form form = hosting::Form::vst2;
  std::string formPath;     ///< The library, or the bundle of another form.
  std::string libraryPath;  ///< The VST 2 form, which the others are compared with.
  bool full = false;        ///< Full repetitions, which take minutes; otherwise about half a minute in all.
  std::vector<std::string> parameterNames;  ///< Of the VST 2 form, in its order.
  std::string only;                         ///< Runs only the checks whose names hold this text.
  double soakHours = 0.0;                   ///< Hours of audio in the long rendering; 0 for its default of minutes.

  /// Returns the number of repetitions: `complete` in a full run, else `bounded`. A third of that, but at least two if
  /// `bounded` is, in the other forms, which share almost all code with VST 2, and under a sanitizer.
  int count(int bounded, int complete) const {
    if (full) {
      return complete;
    }
    const int share = (isVst2() ? 1 : 3) * (isSanitized() ? 3 : 1);
    return std::max(bounded / share, std::min(bounded, 2));
  }

  /// A text that occurs only in the path of the code that `load` loads into this process.
  std::string moduleName() const;

  bool isVst2() const { return form == hosting::Form::vst2; }

  /// Loads the form that is checked. Throws HostError.
  std::unique_ptr<hosting::PluginFile> load() const;
  /// Loads the VST 2 form.
  std::unique_ptr<hosting::PluginFile> loadVst2() const;
};

struct Verdict {
  bool passed = false;
  std::string figure;
  bool wasRun = true;  ///< If false, `figure` names the missing requirement.
};

/// The forms that a check is for.
enum class CheckedForms {
  all,
  vst2,   ///< Rules of the VST 2 interface.
  others  ///< Properties that the other forms must share with VST 2.
};

struct Check {
  const char* name;
  Verdict (*body)(const CheckSettings& settings);
  CheckedForms forms = CheckedForms::all;
};

/// Returns a verdict whose figure is formatted as by printf.
[[gnu::format(printf, 2, 3)]] Verdict verdict(bool passed, const char* format, ...);

/// The checks by subject, in the order in which they run.
std::vector<Check> lifecycleChecks();
std::vector<Check> audioChecks();
std::vector<Check> eventChecks();
std::vector<Check> parameterChecks();
std::vector<Check> stateChecks();
std::vector<Check> threadChecks();
std::vector<Check> realTimeChecks();
/// Comparisons of a form with VST 2.
std::vector<Check> formChecks();
/// The additional cost of a form over VST 2.
std::vector<Check> costChecks();
/// Not run where there is no X server, and none can be started.
std::vector<Check> editorChecks();

/// Runs every check and prints a line for each. Returns the number that failed; one that cannot run here has not
/// failed. Throws HostError when the plug-in cannot be loaded at all.
int runChecks(CheckSettings settings);

}  // namespace sivray::check
