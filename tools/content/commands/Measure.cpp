// The command that measures waves against recorded drums and draws them.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <iostream>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/measure/GrooveSound.h"
#include "content/measure/KitSound.h"
#include "content/measure/Report.h"
#include "content/measure/Spread.h"
#include "core/EngineRate.h"
#include "sheet/SpectrogramSheet.h"
#include "storage/paths/Paths.h"
#include "terminal/ProgressBar.h"

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

std::string installedLibrary() {
  std::string folder = systemPathOf(tesh::bramel::directoryFor(tesh::bramel::kBramelDirectory_Resource)) + "/SivrayPCM";
  if (!std::filesystem::exists(pathOf(folder))) {
    throw std::runtime_error("no content is installed, so name a folder of waves, such as content/waves");
  }
  return folder;
}

/// Draws a sheet for each category, named after it: "close-hh.png".
void writeSheets(const std::string& folder, const std::vector<MeasuredWave>& waves, SheetSize size) {
  std::filesystem::create_directories(pathOf(folder));
  for (std::size_t category = 0; category < kCategoryNames.size(); ++category) {
    SpectrogramSheet sheet(kMeasureRate, size);
    for (const MeasuredWave& wave : waves) {
      if (wave.category == static_cast<int>(category)) {
        sheet.add(wave.name, wave.hit);
      }
    }
    const juce::String name =
        juce::String(std::string(kCategoryNames[category])).toLowerCase().replaceCharacter(' ', '-');
    sheet.write(folder + "/" + name.toStdString() + ".png");
  }
}

/// Draws the groove on all kits, as many on a sheet as are readable.
void writeKitSheets(const std::string& folder, const std::vector<KitSound>& kits) {
  constexpr std::size_t kKitsPerSheet = 25;
  std::filesystem::create_directories(pathOf(folder));
  for (std::size_t first = 0; first < kits.size(); first += kKitsPerSheet) {
    SpectrogramSheet sheet(tesh::cofu::core::kEngineRate);
    for (std::size_t i = first; i < std::min(first + kKitsPerSheet, kits.size()); ++i) {
      sheet.add(kits[i].name, kits[i].groove);
    }
    sheet.write(folder + "/kits-" + std::to_string(first / kKitsPerSheet + 1) + ".png");
  }
}

void measureKits(const std::string& sheets) {
  KitMeter meter;
  std::vector<KitSound> kits;
  ProgressBar bar(false);
  for (std::size_t program = 0; program < meter.programCount(); ++program) {
    bar.show(static_cast<double>(program) / static_cast<double>(meter.programCount()));
    kits.push_back(soundOf(meter, program));
  }
  bar.clear();
  printKits(std::cout, kits);
  if (!sheets.empty()) {
    writeKitSheets(sheets, kits);
  }
}

}  // namespace

void runMeasure(const juce::ArgumentList& list) {
  CommandLine line(list, kMeasureUsage);
  if (line.takeFlag("--kits")) {
    const std::string sheets = line.takeValue("--sheets");
    line.takeRest(0);
    measureKits(sheets);
    return;
  }
  if (const std::string grooves = line.takeValue("--grooves"); !grooves.empty()) {
    line.takeRest(0);
    KitMeter meter;
    printGrooves(std::cout, soundsOf(meter, readSuite(grooves)));
    return;
  }
  const std::string against = line.takeValue("--against");
  const std::string tuning = line.takeValue("--tuning");
  const std::string judging = line.takeValue("--judging");
  const Half half = halfOf(line, line.takeValue("--half"));
  const std::string only = line.takeValue("--wave");
  const std::string sheets = line.takeValue("--sheets");
  const SheetSize sizeOfSheets = line.takeFlag("--small") ? SheetSize::small : SheetSize::large;
  const bool isTargets = line.takeFlag("--targets");
  const bool isBrief = line.takeFlag("--brief");
  const std::vector<std::string> folders = line.takeRestUpTo(1);

  std::vector<Reference> references;
  if (!against.empty()) {
    references = readReferences(against);
  }
  if (!tuning.empty()) {
    addReferences(references, tuning, Half::tune);
  }
  if (!judging.empty()) {
    addReferences(references, judging, Half::judge);
  }
  if (isTargets) {
    printTargets(std::cout, references);
    return;
  }
  const std::vector<MeasuredWave> waves =
      measureWaves(readSourceWaves(folders.empty() ? installedLibrary() : folders.front(), only));
  for (const MeasuredWave& wave : waves) {
    if (!isBrief && (wave.group || !only.empty())) {
      printWave(std::cout, wave, references, half);
    }
  }
  if (only.empty()) {
    printGroups(std::cout, waves, references, half);
    if (!references.empty()) {
      printSpread(std::cout, waves, references, half);
      printTells(std::cout, waves, references, half);
    }
    printTwins(std::cout, waves);
  }
  if (!sheets.empty()) {
    writeSheets(sheets, waves, sizeOfSheets);
  }
}

}  // namespace sivray::content
