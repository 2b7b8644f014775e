// Compares the machine's MIDI inputs with the open ones.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/standalone/MidiInputs.h"

#include <set>
#include <utility>

namespace tesh::bramel::standalone {
namespace {

constexpr int kLookMilliseconds = 3000;

}  // namespace

void MidiInputs::start(const juce::StringArray& newNamesSwitched) {
  switched = newNamesSwitched;
  look();
  startTimer(kLookMilliseconds);
}

void MidiInputs::setOn(const juce::String& name, bool isOn) {
  switched.removeString(name);
  if (isOn != system.opensUnasked) {
    switched.add(name);
  }
  look();
}

void MidiInputs::look() {
  std::vector<Device> found;
  std::set<juce::String> wanted;
  for (const auto& info : system.list()) {
    const bool isOn = system.opensUnasked != switched.contains(info.name);
    if (!isOn) {
      found.push_back({.name = info.name, .isOn = false, .isOpen = false});
      continue;
    }
    wanted.insert(info.identifier);
    auto& input = open[info.identifier];
    if (input == nullptr) {
      input = system.open(info.identifier, callback);
    }
    found.push_back({.name = info.name, .isOn = true, .isOpen = input != nullptr});
  }
  std::erase_if(open, [&](const auto& entry) { return entry.second == nullptr || !wanted.contains(entry.first); });
  if (std::exchange(list, std::move(found)) != list && onChange) {
    onChange();
  }
}

}  // namespace tesh::bramel::standalone
