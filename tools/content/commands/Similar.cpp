// The command that measures which waves of a library sound alike.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <iostream>

#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/library/LibraryReader.h"
#include "content/measure/Similar.h"
#include "terminal/Printable.h"

namespace sivray::content {

void runSimilar(const juce::ArgumentList& list) {
  CommandLine line(list, kSimilarUsage);
  const std::string folder = line.takeRest(1).front();
  const std::vector<Wave> waves = readLibrary(folder);
  writeSimilar(folder, waves);
  std::cout << "Compared " << waves.size() << " waves in " << printable(folder) << std::endl;
}

}  // namespace sivray::content
