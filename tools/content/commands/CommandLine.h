// Parses a command's arguments: options are taken out one by one, and the words that are left name the files to work
// on.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

namespace sivray::content {

enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2 };

/// Prints "sivray-content: " and the line on standard error and ends the program with `status`.
[[noreturn]] void fail(const std::string& line, ExitStatus status);

class CommandLine {
 public:
  /// `usage` is printed when the arguments are wrong.
  CommandLine(const juce::ArgumentList& list, std::string usage);

  bool takeFlag(const char* option);

  /// Returns the word after an option, or after the "=" of a long one; empty if the option is absent. Ends the
  /// program with the usage line if the option has no value.
  std::string takeValue(const char* option);

  /// As `takeValue`, but ends the program with the usage line if the option is absent.
  std::string takeRequired(const char* option);

  /// Returns the remaining words. Ends the program with the usage line unless there are exactly `count` and none is an
  /// option.
  std::vector<std::string> takeRest(std::size_t count);

  /// As `takeRest`, for at most `count` words.
  std::vector<std::string> takeRestUpTo(std::size_t count);

  /// As `takeRest`, for at least one word.
  std::vector<std::string> takeAll();

  [[noreturn]] void failUsage() const;

 private:
  juce::ArgumentList words;
  std::string usageLine;
};

}  // namespace sivray::content
