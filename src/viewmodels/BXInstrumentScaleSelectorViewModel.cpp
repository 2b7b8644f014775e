// Scale and note count go to the scale host, all else to the keyboard.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "viewmodels/BXInstrumentScaleSelectorViewModel.h"

#include <utility>

namespace tesh::bramel {

BXInstrumentScaleSelectorViewModel::BXInstrumentScaleSelectorViewModel(
    std::shared_ptr<BXInstrumentKeyboardViewModel> keyboardViewModel)
    : keyboard(std::move(keyboardViewModel)) {}

std::int32_t BXInstrumentScaleSelectorViewModel::getScaleCount() const {
  return static_cast<std::int32_t>(scale::kScaleCount);
}

std::string BXInstrumentScaleSelectorViewModel::getScaleName(std::int32_t index) const {
  return scale::scaleName(index);
}

std::uint64_t BXInstrumentScaleSelectorViewModel::getMaxNoteCount() const {
  return scale::kScaleTables[static_cast<std::size_t>(getScaleIndex())].noteCount;
}

std::int32_t BXInstrumentScaleSelectorViewModel::getScaleIndex() const { return keyboard->scaleHost().scaleIndex(); }

void BXInstrumentScaleSelectorViewModel::setScale(std::int32_t index) {
  const bool exists = index >= 0 && index < getScaleCount();
  if (exists && index != getScaleIndex()) {
    keyboard->scaleHost().setScale(index);
    keyboard->notifyKeyboardLayoutChanged();
  }
}

std::uint64_t BXInstrumentScaleSelectorViewModel::getNoteCount() const { return keyboard->getNoteCount(); }

void BXInstrumentScaleSelectorViewModel::setNoteCount(std::uint64_t count) {
  if (count != 0 && count != getNoteCount()) {
    keyboard->scaleHost().setNoteCount(count);
    keyboard->notifyKeyboardLayoutChanged();
  }
}

std::int32_t BXInstrumentScaleSelectorViewModel::getKey() const { return keyboard->getKey(); }

void BXInstrumentScaleSelectorViewModel::setKey(std::int32_t key) { keyboard->setKey(key); }

std::int32_t BXInstrumentScaleSelectorViewModel::getOctave() const { return keyboard->getOctave(); }

void BXInstrumentScaleSelectorViewModel::setOctave(std::int32_t octave) { keyboard->setOctave(octave); }

std::uint64_t BXInstrumentScaleSelectorViewModel::getKeyRange() const { return keyboard->getKeyRange(); }

void BXInstrumentScaleSelectorViewModel::setKeyRange(std::uint64_t range) { keyboard->setKeyRange(range); }

bool BXInstrumentScaleSelectorViewModel::getChordMode() const { return keyboard->getChordMode(); }

void BXInstrumentScaleSelectorViewModel::setChordMode(bool isOn) { keyboard->setChordMode(isOn); }

}  // namespace tesh::bramel
