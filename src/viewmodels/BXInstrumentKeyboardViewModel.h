// The notes of an instrument's panel, and its scale, which is kept when the editor closes.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "host/shell/BramelInstrument.h"
#include "scale/ScaleHost.h"
#include "viewmodels/IPluginEditViewModelOwner.h"
#include "viewmodels/IPluginKeyboardViewModelOwner.h"

namespace tesh::bramel {

class BXInstrumentKeyboardViewModel : public virtual IPluginKeyboardViewModelOwner {
 public:
  /// `editViewModel` makes this object and calls `forgetOwner` before it is destroyed.
  BXInstrumentKeyboardViewModel(IPluginEditViewModelOwner& editViewModel, std::shared_ptr<vst::BramelInstrument> shell);

  IPluginKeyboardViewModelListener* getListener() const override { return listener.lock().get(); }
  void setListener(IPluginKeyboardViewModelListener* newListener) override;
  bool getInstrumentFlag() const override { return true; }
  std::int32_t getKey() const override { return static_cast<std::int32_t>(host->rootKey()); }
  void setKey(std::int32_t key) override;
  std::int32_t getOctave() const override { return host->octave(); }
  void setOctave(std::int32_t octave) override;
  std::uint64_t getKeyRange() const override { return host->keyRange(); }
  void setKeyRange(std::uint64_t range) override;
  bool getChordMode() const override { return host->chordMode(); }
  void setChordMode(bool isOn) override;
  bool getViewFlag() const override { return viewFlag; }
  void setViewFlag(bool flag) override { viewFlag = flag; }
  std::int64_t getViewValue() const override { return viewValue; }
  void setViewValue(std::int64_t value) override { viewValue = value; }
  std::uint32_t getViewIndex() const override { return viewIndex; }
  void setViewIndex(std::uint32_t index) override { viewIndex = index; }
  bool isKeyboardEnabled() const override { return true; }
  std::int32_t noteForKey(std::int32_t key) const override { return host->noteForKey(key, 0); }
  std::int32_t chordNote(std::int32_t key, std::uint32_t voice) const override;
  std::uint64_t getNoteCount() const override { return host->noteCount(); }
  void sendMidi(const std::uint8_t* data, std::size_t size) override { instrument->sendKeyboardMidi(data, size, 0); }

  void noteOn(std::int32_t note) override { tellListener(&IPluginKeyboardViewModelListener::onNoteOn, note); }
  void noteOff(std::int32_t note) override { tellListener(&IPluginKeyboardViewModelListener::onNoteOff, note); }

  // For the scale selector and the edit view model.

  scale::ScaleHost& scaleHost() const { return *host; }
  /// Tells the listener that the keys' notes have changed.
  void notifyKeyboardLayoutChanged() { tellListener(&IPluginKeyboardViewModelListener::onKeyboardLayoutChanged); }
  /// The edit view model is about to be destroyed.
  void forgetOwner() { owner = nullptr; }

 private:
  template <typename Event, typename... Values>
  void tellListener(Event event, Values... values) {
    if (const auto held = listener.lock()) {
      (*held.*event)(*this, values...);
    }
  }

  std::shared_ptr<scale::ScaleHost> host;
  IPluginEditViewModelOwner* owner;  ///< Null after `forgetOwner`.
  std::weak_ptr<IPluginKeyboardViewModelListener> listener;
  std::shared_ptr<vst::BramelInstrument> instrument;
  bool viewFlag = false;
  std::int64_t viewValue = 0;
  std::uint32_t viewIndex = 0;
};

}  // namespace tesh::bramel
