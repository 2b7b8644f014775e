// The command that prints the content of a file, as text or JSON.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/inspect/Inspect.h"

#include <iostream>

#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"

namespace sivray::content {

void runInspect(const juce::ArgumentList& list) {
  CommandLine line(list, kInspectUsage);
  const bool asJson = line.takeFlag("--json");
  const std::string path = line.takeRest(1).front();

  Inspection inspection = inspectFile(path);
  const auto& broken = inspection.broken;
  if (broken && asJson) {
    Report& place = inspection.report.add("broken", Report::object());
    place.addNumber("offset", broken->offset);
    place.addText("reason", broken->what());
  }
  std::cout << (asJson ? inspection.report.toJson() : inspection.report.toText()) << std::flush;
  if (broken) {
    fail(path + ": breaks at offset " + std::to_string(broken->offset) + ": " + broken->what(), kFailed);
  }
}

}  // namespace sivray::content
