// Sends notes for pressed pads and lights the pads of incoming notes.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/BWVirtualDrumPadGroup.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/MidiStatus.h"

namespace tesh::bramel {
namespace {

constexpr std::uint8_t kPressVelocity = 100;
constexpr std::int32_t kLastNote = 127;

}  // namespace

BWVirtualDrumPadGroup::~BWVirtualDrumPadGroup() {
  if (model == nullptr) {
    return;
  }
  model->setListener(nullptr);
  for (const auto& [note, pad] : pads) {
    if (pad->isPressed()) {
      send(note, 0);  // The pad was held when the panel closed: nobody else would end the note.
    }
  }
}

void BWVirtualDrumPadGroup::setKeyboardViewModel(std::shared_ptr<IPluginKeyboardViewModel> newModel) {
  model = std::move(newModel);
  model->setListener(this);
}

void BWVirtualDrumPadGroup::setPads(Pads newPads) {
  pads = std::move(newPads);
  for (const auto& [note, pad] : pads) {
    pad->setListener(this);
  }
}

void BWVirtualDrumPadGroup::controlValueChanged(IBWControl& control) {
  const auto found = std::find_if(pads.begin(), pads.end(), [&control](const auto& entry) {
    return static_cast<const IBWControl*>(entry.second.get()) == &control;
  });
  if (found == pads.end() || model == nullptr) {
    return;
  }
  send(found->first, found->second->getState() ? kPressVelocity : 0);
}

void BWVirtualDrumPadGroup::send(std::uint8_t note, std::uint8_t velocity) {
  const std::array<std::uint8_t, 3> message{cofu::core::kMidiNoteOn, note, velocity};
  model->sendMidi(message.data(), message.size());
}

std::weak_ptr<IPluginKeyboardViewModelListener> BWVirtualDrumPadGroup::getWeakSelf() {
  return std::shared_ptr<IPluginKeyboardViewModelListener>(liveness, this);
}

void BWVirtualDrumPadGroup::onNoteOn(IPluginKeyboardViewModel& /*from*/, std::int32_t note) { light(note, true); }

void BWVirtualDrumPadGroup::onNoteOff(IPluginKeyboardViewModel& /*from*/, std::int32_t note) { light(note, false); }

void BWVirtualDrumPadGroup::light(std::int32_t note, bool isOn) {
  if (note < 0 || note > kLastNote) {
    return;
  }
  const auto found = pads.find(static_cast<std::uint8_t>(note));
  if (found != pads.end()) {
    found->second->setState(isOn);
  }
}

}  // namespace tesh::bramel
