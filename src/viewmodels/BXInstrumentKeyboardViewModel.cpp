// The keyboard's setters with their notifications, and notes both ways.
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

template <typename Event, typename... Values>
void BXInstrumentKeyboardViewModel::tellListener(Event event, Values... values) {
  if (const auto held = listener.lock()) {
    (*held.*event)(*this, values...);
  }
}

IPluginKeyboardViewModelListener* BXInstrumentKeyboardViewModel::getListener() const { return listener.lock().get(); }

void BXInstrumentKeyboardViewModel::setListener(IPluginKeyboardViewModelListener* newListener) {
  listener = newListener == nullptr ? std::weak_ptr<IPluginKeyboardViewModelListener>{} : newListener->getWeakSelf();
}

bool BXInstrumentKeyboardViewModel::getInstrumentFlag() const { return true; }

std::int32_t BXInstrumentKeyboardViewModel::getKey() const { return static_cast<std::int32_t>(host->rootKey()); }

void BXInstrumentKeyboardViewModel::setKey(std::int32_t key) {
  if (key != getKey()) {
    host->setKey(static_cast<std::uint32_t>(key));
    notifyKeyboardLayoutChanged();
  }
}

std::int32_t BXInstrumentKeyboardViewModel::getOctave() const { return host->octave(); }

void BXInstrumentKeyboardViewModel::setOctave(std::int32_t octave) {
  const std::int32_t held = std::clamp(octave, 0, kHighestOctave);
  if (held != getOctave()) {
    host->setOctave(held);
    tellListener(&IPluginKeyboardViewModelListener::onOctaveChanged);
  }
}

std::uint64_t BXInstrumentKeyboardViewModel::getKeyRange() const { return host->keyRange(); }

void BXInstrumentKeyboardViewModel::setKeyRange(std::uint64_t range) {
  if (range != 0 && range != getKeyRange()) {
    host->setKeyRange(range);
    notifyKeyboardLayoutChanged();
  }
}

bool BXInstrumentKeyboardViewModel::getChordMode() const { return host->chordMode(); }

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

bool BXInstrumentKeyboardViewModel::getViewFlag() const { return viewFlag; }

void BXInstrumentKeyboardViewModel::setViewFlag(bool flag) { viewFlag = flag; }

std::int64_t BXInstrumentKeyboardViewModel::getViewValue() const { return viewValue; }

void BXInstrumentKeyboardViewModel::setViewValue(std::int64_t value) { viewValue = value; }

std::uint32_t BXInstrumentKeyboardViewModel::getViewIndex() const { return viewIndex; }

void BXInstrumentKeyboardViewModel::setViewIndex(std::uint32_t index) { viewIndex = index; }

bool BXInstrumentKeyboardViewModel::isKeyboardEnabled() const { return true; }

std::int32_t BXInstrumentKeyboardViewModel::noteForKey(std::int32_t key) const { return host->noteForKey(key, 0); }

std::int32_t BXInstrumentKeyboardViewModel::chordNote(std::int32_t key, std::uint32_t voice) const {
  const scale::ChordRecord chord = host->chordForKey(key, 0);
  return voice < static_cast<std::uint32_t>(chord.count) ? chord.notes[voice] : 0;
}

std::uint64_t BXInstrumentKeyboardViewModel::getNoteCount() const { return host->noteCount(); }

void BXInstrumentKeyboardViewModel::sendMidi(const std::uint8_t* data, std::size_t size) {
  instrument->sendKeyboardMidi(data, size, 0);
}

void BXInstrumentKeyboardViewModel::noteOn(std::int32_t note) {
  tellListener(&IPluginKeyboardViewModelListener::onNoteOn, note);
}

void BXInstrumentKeyboardViewModel::noteOff(std::int32_t note) {
  tellListener(&IPluginKeyboardViewModelListener::onNoteOff, note);
}

void BXInstrumentKeyboardViewModel::notifyKeyboardLayoutChanged() {
  tellListener(&IPluginKeyboardViewModelListener::onKeyboardLayoutChanged);
}

void BXInstrumentKeyboardViewModel::forgetOwner() { owner = nullptr; }

}  // namespace tesh::bramel
