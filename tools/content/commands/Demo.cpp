// The command that turns a score into a MIDI file.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "content/Files.h"
#include "content/commands/CommandLine.h"
#include "content/commands/Commands.h"
#include "content/demo/Score.h"

namespace sivray::content {

void runDemo(const juce::ArgumentList& list) {
  CommandLine line(list, kDemoUsage);
  const std::string target = line.takeRequired("-o");
  const std::string score = line.takeRest(1).front();
  writeMidiFile(target, parseScore(readText(score), score));
}

}  // namespace sivray::content
