// Takes options out of a command's arguments and reports wrong usage.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/commands/CommandLine.h"

#include <utility>

#include "terminal/Printable.h"

namespace sivray::content {

void fail(const std::string& line, ExitStatus status) {
  juce::ConsoleApplication::fail(juce::String::fromUTF8(("sivray-content: " + printable(line)).c_str()), status);
  std::abort();  // Not reached: the line above throws.
}

CommandLine::CommandLine(const juce::ArgumentList& list, std::string usage) : words(list), usageLine(std::move(usage)) {
  words.arguments.remove(0);  // The command itself.
}

bool CommandLine::takeFlag(const char* option) { return words.removeOptionIfFound(option); }

std::string CommandLine::takeValue(const char* option) {
  if (!words.containsOption(option)) {
    return {};
  }
  std::string value;
  const int place = words.indexOfOption(option);
  if (words[place].isLongOption() && !words[place].text.containsChar('=')) {
    if (place + 1 < words.size() && !words[place + 1].isOption()) {
      value = words[place + 1].text.toStdString();
      words.arguments.removeRange(place, 2);
    }
  } else {
    value = words.removeValueForOption(option).toStdString();
  }
  if (value.empty()) {
    failUsage();
  }
  return value;
}

std::string CommandLine::takeRequired(const char* option) {
  std::string value = takeValue(option);
  if (value.empty()) {
    failUsage();
  }
  return value;
}

std::vector<std::string> CommandLine::takeRest(std::size_t count) {
  std::vector<std::string> rest = takeRestUpTo(count);
  if (rest.size() != count) {
    failUsage();
  }
  return rest;
}

std::vector<std::string> CommandLine::takeRestUpTo(std::size_t count) {
  std::vector<std::string> rest;
  for (const auto& word : words.arguments) {
    if (word.isOption()) {
      failUsage();
    }
    rest.push_back(word.text.toStdString());
  }
  if (rest.size() > count) {
    failUsage();
  }
  return rest;
}

std::vector<std::string> CommandLine::takeAll() {
  std::vector<std::string> rest = takeRestUpTo(static_cast<std::size_t>(words.size()));
  if (rest.empty()) {
    failUsage();
  }
  return rest;
}

void CommandLine::failUsage() const { fail("usage: sivray-content " + usageLine, kWrongUsage); }

}  // namespace sivray::content
