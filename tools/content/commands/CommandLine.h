// The words behind a command: options are taken out one by one, what is left must be what the command works on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

namespace sivray::content {

enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Ends the program with one line on standard error.
[[noreturn]] void fail(const std::string& line, ExitStatus status);

class CommandLine {
 public:
  /// `usage` is shown when the words do not fit.
  CommandLine(const juce::ArgumentList& list, std::string usage);

  bool takeFlag(const char* option);

  /// The word behind a short option, or behind the = of a long one. Wrong usage when the option has none; empty when it
  /// is not there.
  std::string takeValue(const char* option);

  /// The same for an option that must be there.
  std::string takeRequired(const char* option);

  /// All that is left: exactly `count` words and no option.
  std::vector<std::string> takeRest(std::size_t count);

  [[noreturn]] void failUsage() const;

 private:
  juce::ArgumentList words;
  std::string usageLine;
};

}  // namespace sivray::content
