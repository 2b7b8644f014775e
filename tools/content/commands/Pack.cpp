// The command that packs a folder of sound files into a sample library.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <iostream>

#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/library/LibraryWriter.h"
#include "content/pack/Packer.h"
#include "terminal/ProgressBar.h"

namespace sivray::content {

void runPack(const juce::ArgumentList& list) {
  CommandLine line(list, kPackUsage);
  const std::string target = line.takeRequired("-o");
  const std::string folder = line.takeRest(1).front();

  ProgressBar bar(false);
  const PackReport report{[&bar](const std::string& words) {
                            bar.clear();
                            std::cerr << words << std::endl;
                          },
                          [&bar](double done) { bar.show(done); }};
  const PackResult result = packFolder(folder, report);
  bar.clear();
  if (result.waves.empty()) {
    fail(folder + ": there is no sound file in it that could be used", kFailed);
  }
  writeLibrary(target, result.waves);
  std::cout << "Packed " << result.waves.size() << " waves into " << target;
  if (result.unusable > 0) {
    std::cout << "; " << result.unusable << " files or folders could not be used";
  }
  std::cout << std::endl;
}

}  // namespace sivray::content
