// The scale of an instrument's keyboard, for a panel on which the user can choose it. Scale and note count are stored
// in the scale host, everything else in the keyboard.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "viewmodels/BXInstrumentKeyboardViewModel.h"
#include "viewmodels/IScaleSelectorViewModel.h"

namespace tesh::bramel {

class BXInstrumentScaleSelectorViewModel : public IScaleSelectorViewModel {
 public:
  explicit BXInstrumentScaleSelectorViewModel(std::shared_ptr<BXInstrumentKeyboardViewModel> keyboardViewModel)
      : keyboard(std::move(keyboardViewModel)) {}

  std::int32_t getScaleCount() const override { return static_cast<std::int32_t>(scale::kScaleCount); }
  std::string getScaleName(std::int32_t index) const override { return scale::scaleName(index); }
  std::uint64_t getMaxNoteCount() const override {
    return scale::kScaleTables[static_cast<std::size_t>(getScaleIndex())].noteCount;
  }
  std::int32_t getScaleIndex() const override { return keyboard->scaleHost().scaleIndex(); }
  void setScale(std::int32_t index) override {
    const bool exists = index >= 0 && index < getScaleCount();
    if (exists && index != getScaleIndex()) {
      keyboard->scaleHost().setScale(index);
      keyboard->notifyKeyboardLayoutChanged();
    }
  }
  std::int32_t getKey() const override { return keyboard->getKey(); }
  void setKey(std::int32_t key) override { keyboard->setKey(key); }
  std::uint64_t getNoteCount() const override { return keyboard->getNoteCount(); }
  void setNoteCount(std::uint64_t count) override {
    if (count != 0 && count != getNoteCount()) {
      keyboard->scaleHost().setNoteCount(count);
      keyboard->notifyKeyboardLayoutChanged();
    }
  }
  std::int32_t getOctave() const override { return keyboard->getOctave(); }
  void setOctave(std::int32_t octave) override { keyboard->setOctave(octave); }
  std::uint64_t getKeyRange() const override { return keyboard->getKeyRange(); }
  void setKeyRange(std::uint64_t range) override { keyboard->setKeyRange(range); }
  bool getChordMode() const override { return keyboard->getChordMode(); }
  void setChordMode(bool isOn) override { keyboard->setChordMode(isOn); }

 private:
  const std::shared_ptr<BXInstrumentKeyboardViewModel> keyboard;
};

}  // namespace tesh::bramel
