// The commands that build the factory content: waves and kits.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <iostream>
#include <iterator>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/factory/MacroFiles.h"
#include "content/factory/WaveBuild.h"
#include "content/library/LibraryWriter.h"
#include "content/waves/FactoryWaves.h"

namespace sivray::content {

void runWaves(const juce::ArgumentList& list) {
  CommandLine line(list, kWavesUsage);
  const std::string target = line.takeRequired("-o");
  const std::string notes = line.takeValue("--notes");
  const std::string code = line.takeValue("--code");
  if (notes.empty() != code.empty()) {
    line.failUsage();
  }
  const std::string tables = line.takeRest(1).front();
  if (notes.empty()) {
    const std::vector<Wave> waves = makeFactoryWaves(pathOf(tables));
    writeLibrary(target, waves);
    std::cout << "Made " << waves.size() << " waves in " << target << std::endl;
    return;
  }
  const WaveBuild build = buildWaves(tables, {target, notes, code});
  writeLibrary(target, build.waves);
  writeText(notes, build.notes);
  std::cout << "Made " << build.rendered << " of " << build.waves.size() << " waves anew in " << target << std::endl;
}

void runBank(const juce::ArgumentList& list) {
  CommandLine line(list, kBankUsage);
  const std::string target = line.takeRequired("-o");
  const std::vector<std::string> folders = line.takeRest(2);
  const std::vector<FactoryRow> rows = readFactoryRows(pathOf(folders[0]));
  std::vector<std::string> names;
  std::ranges::transform(rows, std::back_inserter(names), [](const FactoryRow& row) { return row.row.name; });
  const auto bank = factory::makeFactoryBank(factory::readBank(folders[1]), names);
  factory::writeMacroFiles(target, bank);
  std::cout << "Made " << bank.programs.size() << " kits in " << target << std::endl;
}

}  // namespace sivray::content
