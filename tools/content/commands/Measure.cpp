// The command that measures waves against recorded drums.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <iostream>

#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/measure/Report.h"

namespace sivray::content {
namespace {

Half halfOf(const CommandLine& line, const std::string& name) {
  if (name.empty()) {
    return Half::both;
  }
  if (name != "tune" && name != "judge") {
    line.failUsage();
  }
  return name == "tune" ? Half::tune : Half::judge;
}

std::vector<MeasuredWave> measureTables(const std::string& folder) {
  std::vector<Wave> waves = makeFactoryWaves(folder);
  std::vector<std::optional<Group>> groups;
  std::ranges::transform(readFactoryRows(folder), std::back_inserter(groups),
                         [](const FactoryRow& row) { return groupOf(row); });
  return measureWaves(waves, groups);
}

}  // namespace

void runMeasure(const juce::ArgumentList& list) {
  CommandLine line(list, kMeasureUsage);
  const std::string against = line.takeValue("--against");
  const Half half = halfOf(line, line.takeValue("--half"));
  const std::string name = line.takeValue("--wave");
  const bool isTargets = line.takeFlag("--targets");
  const std::string folder = line.takeRest(1).front();

  std::vector<Reference> references;
  if (!against.empty()) {
    references = readReferences(against);
  }
  if (isTargets) {
    printTargets(std::cout, references);
    return;
  }
  const std::vector<MeasuredWave> waves = measureTables(folder);
  for (const MeasuredWave& wave : waves) {
    if (name.empty() ? wave.group.has_value() : wave.name == name) {
      printWave(std::cout, wave, references, half);
    }
  }
  printGroups(std::cout, waves, references, half);
  printTwins(std::cout, waves);
}

}  // namespace sivray::content
