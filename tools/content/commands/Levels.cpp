// The commands that measure the factory kits' pads and write balanced levels into the kits' texts.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>

#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/factory/Bank.h"
#include "content/levels/Balance.h"
#include "terminal/ProgressBar.h"

namespace sivray::content {
namespace {

void printRow(const std::string& kit, const std::string& pads, const HitMeasure& hit) {
  std::printf("%s\t%s\t%.2f\t%.2f\t%.3f\t%.0f\n", kit.c_str(), pads.c_str(), decibelsOf(hit.peak),
              decibelsOf(hit.loudness), hit.seconds, hit.brightness);
}

}  // namespace

void runLevels(const juce::ArgumentList& list) {
  CommandLine line(list, kLevelsUsage);
  line.takeRest(0);
  KitMeter meter;
  std::printf("kit\tpad\tpeak dB\tloudness dB\tseconds\tbrightness Hz\n");
  for (std::size_t program = 0; program < meter.programCount(); ++program) {
    meter.select(program);
    std::vector<int> all;
    for (std::size_t pad = 0; pad < factory::kPads; ++pad) {
      all.push_back(factory::padNote(pad));
      printRow(meter.programName(program), std::to_string(all.back()),
               meter.hit({all.back()}, kFullVelocity, kListenSeconds));
    }
    printRow(meter.programName(program), "all", meter.hit(all, kFullVelocity, kListenSeconds));
  }
}

void runBalance(const juce::ArgumentList& list) {
  CommandLine line(list, kBalanceUsage);
  const std::string folder = line.takeRest(1).front();
  const std::vector<factory::BankKit> bank = factory::readBank(folder);
  KitMeter meter;
  if (meter.programCount() != bank.size()) {
    fail(folder + ": these are not the kits that the installed content was built from", kFailed);
  }
  ProgressBar bar(false);
  for (std::size_t program = 0; program < bank.size(); ++program) {
    bar.show(static_cast<double>(program) / static_cast<double>(bank.size()));
    const auto& [file, kit] = bank[program];
    meter.select(program);
    writeText(file, withLevels(readText(file), kit, balancedLevels(meter, kit)));
  }
}

}  // namespace sivray::content
