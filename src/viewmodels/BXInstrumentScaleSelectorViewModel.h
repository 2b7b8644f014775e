// The scale of an instrument's keyboard, for a panel that lets the user choose it.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "viewmodels/BXInstrumentKeyboardViewModel.h"
#include "viewmodels/IScaleSelectorViewModel.h"

namespace tesh::bramel {

class BXInstrumentScaleSelectorViewModel : public IScaleSelectorViewModel {
 public:
  explicit BXInstrumentScaleSelectorViewModel(std::shared_ptr<BXInstrumentKeyboardViewModel> keyboardViewModel);

  std::int32_t getScaleCount() const override;
  std::string getScaleName(std::int32_t index) const override;
  std::uint64_t getMaxNoteCount() const override;
  std::int32_t getScaleIndex() const override;
  void setScale(std::int32_t index) override;
  std::int32_t getKey() const override;
  void setKey(std::int32_t key) override;
  std::uint64_t getNoteCount() const override;
  void setNoteCount(std::uint64_t count) override;
  std::int32_t getOctave() const override;
  void setOctave(std::int32_t octave) override;
  std::uint64_t getKeyRange() const override;
  void setKeyRange(std::uint64_t range) override;
  bool getChordMode() const override;
  void setChordMode(bool isOn) override;

 private:
  const std::shared_ptr<BXInstrumentKeyboardViewModel> keyboard;
};

}  // namespace tesh::bramel
