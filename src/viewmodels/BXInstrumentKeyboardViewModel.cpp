// The keyboard's setters and their notifications, and notes in both directions.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXInstrumentKeyboardViewModel.h"

#include <algorithm>
#include <utility>

#include "viewmodels/SharedProperty.h"

namespace tesh::bramel {
namespace {

constexpr const char* kScaleHostKey = "ScaleHost";
constexpr std::int32_t kFirstScale = 2;  ///< Dorian.
constexpr std::int32_t kFirstOctave = 4;

std::shared_ptr<scale::ScaleHost> makeScaleHost() {
  auto host = std::make_shared<scale::ScaleHost>();
  host->setScale(kFirstScale);
  host->setOctave(kFirstOctave);
  host->setChordMode(false);
  return host;
}

}  // namespace

BXInstrumentKeyboardViewModel::BXInstrumentKeyboardViewModel(IPluginEditViewModelOwner& editViewModel,
                                                             std::shared_ptr<vst::BramelInstrument> shell)
    : host(sharedProperty<scale::ScaleHost>(*shell, kScaleHostKey, makeScaleHost)),
      owner(&editViewModel),
      instrument(std::move(shell)) {}

void BXInstrumentKeyboardViewModel::setListener(IPluginKeyboardViewModelListener* newListener) {
  listener = newListener == nullptr ? std::weak_ptr<IPluginKeyboardViewModelListener>{} : newListener->getWeakSelf();
}

void BXInstrumentKeyboardViewModel::setKey(std::int32_t key) {
  if (key != getKey()) {
    host->setKey(static_cast<std::uint32_t>(key));
    notifyKeyboardLayoutChanged();
  }
}

void BXInstrumentKeyboardViewModel::setOctave(std::int32_t octave) {
  const std::int32_t held = std::clamp(octave, 0, kHighestOctave);
  if (held != getOctave()) {
    host->setOctave(held);
    tellListener(&IPluginKeyboardViewModelListener::onOctaveChanged);
  }
}

void BXInstrumentKeyboardViewModel::setKeyRange(std::uint64_t range) {
  if (range != 0 && range != getKeyRange()) {
    host->setKeyRange(range);
    notifyKeyboardLayoutChanged();
  }
}

void BXInstrumentKeyboardViewModel::setChordMode(bool isOn) {
  if (isOn == getChordMode()) {
    return;
  }
  host->setChordMode(isOn);
  if (owner != nullptr) {
    owner->notifyKeyboardStateChanged();
  }
  tellListener(&IPluginKeyboardViewModelListener::onChordModeChanged);
}

std::int32_t BXInstrumentKeyboardViewModel::chordNote(std::int32_t key, std::uint32_t voice) const {
  const scale::ChordRecord chord = host->chordForKey(key, 0);
  return voice < static_cast<std::uint32_t>(chord.count) ? chord.notes[voice] : 0;
}

}  // namespace tesh::bramel
