// Compares the machine's MIDI inputs with those that are open.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/MidiInputs.h"

#include <set>
#include <utility>

namespace tesh::bramel::standalone {
namespace {

constexpr int kLookMilliseconds = 3000;

}  // namespace

void MidiInputs::start(const juce::StringArray& newNamesOff) {
  off = newNamesOff;
  look();
  startTimer(kLookMilliseconds);
}

void MidiInputs::setOn(const juce::String& name, bool isOn) {
  off.removeString(name);
  if (!isOn) {
    off.add(name);
  }
  look();
}

void MidiInputs::look() {
  std::vector<Device> found;
  std::set<juce::String> wanted;
  for (const auto& info : system.list()) {
    const bool isOn = !off.contains(info.name);
    found.push_back({.name = info.name, .isOn = isOn});
    if (!isOn) {
      continue;
    }
    wanted.insert(info.identifier);
    if (auto& input = open[info.identifier]; input == nullptr) {
      input = system.open(info.identifier, callback);
    }
  }
  std::erase_if(open, [&](const auto& entry) { return entry.second == nullptr || !wanted.contains(entry.first); });
  if (std::exchange(list, std::move(found)) != list && onChange) {
    onChange();
  }
}

}  // namespace tesh::bramel::standalone
