// The command that turns a suite of grooves into a MIDI file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/demo/Groove.h"

namespace sivray::content {

void runDemo(const juce::ArgumentList& list) {
  CommandLine line(list, kDemoUsage);
  const std::string target = line.takeRequired("-o");
  writeMidiFile(target, readSuite(line.takeRest(1).front()));
}

}  // namespace sivray::content
