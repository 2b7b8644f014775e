// Checks every few milliseconds which kit the demo needs.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/DemoKits.h"

namespace tesh::bramel::standalone {
namespace {

constexpr int kInterval = 15;  ///< Milliseconds.

}  // namespace

DemoKits::DemoKits(juce::AudioProcessor& instrument, DemoPlayer& player) : processor(instrument), demo(player) {}

DemoKits::~DemoKits() { stop(); }

void DemoKits::play() {
  if (!demo.kitName(0).empty() && ownSound.isEmpty()) {
    processor.getStateInformation(ownSound);
    shown.clear();
    select(0);
    startTimer(kInterval);
  }
  demo.play();
}

void DemoKits::stop() {
  demo.stop();
  stopTimer();
  if (!ownSound.isEmpty()) {
    processor.setStateInformation(ownSound.getData(), static_cast<int>(ownSound.getSize()));
    ownSound.reset();
  }
}

void DemoKits::timerCallback() { select(demo.kit()); }

void DemoKits::select(std::size_t kit) {
  choose(demo.kitName(kit));
  demo.tellSelected(kit);
}

void DemoKits::choose(const std::string& name) {
  if (name == shown) {
    return;
  }
  shown = name;
  for (int program = 0; program < processor.getNumPrograms(); ++program) {
    if (processor.getProgramName(program).toStdString() != name) {
      continue;
    }
    if (program == processor.getCurrentProgram()) {
      // The selected program keeps its edits until another one is selected.
      processor.setCurrentProgram(program == 0 ? 1 : 0);
    }
    processor.setCurrentProgram(program);
    return;
  }
}

}  // namespace tesh::bramel::standalone
