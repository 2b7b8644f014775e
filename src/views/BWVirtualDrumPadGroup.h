// Connects the pads on the panel to MIDI notes: a pressed pad plays, and an incoming note lights its pad.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "viewmodels/IPluginKeyboardViewModel.h"
#include "viewmodels/IPluginKeyboardViewModelListener.h"
#include "widgets/BWToggleButton.h"

namespace tesh::bramel {

/// Not a component. Message thread only.
class BWVirtualDrumPadGroup : public IBWControlListener, public IPluginKeyboardViewModelListener {
 public:
  using Pads = std::map<std::uint8_t, std::shared_ptr<BWToggleButton>>;  ///< By note.

  /// Ends the notes of pads that are still pressed.
  ~BWVirtualDrumPadGroup() override;

  /// Becomes the model's listener.
  void setKeyboardViewModel(std::shared_ptr<IPluginKeyboardViewModel> newModel);
  /// Becomes the listener of each pad.
  void setPads(Pads newPads);

  /// Plays the pad's note: velocity 100 for a press, 0 for a release.
  void controlValueChanged(IBWControl& control) override;

  std::weak_ptr<IPluginKeyboardViewModelListener> getWeakSelf() override;
  void onNoteOn(IPluginKeyboardViewModel& from, std::int32_t note) override;
  void onNoteOff(IPluginKeyboardViewModel& from, std::int32_t note) override;

 private:
  void send(std::uint8_t note, std::uint8_t velocity);
  void light(std::int32_t note, bool isOn);

  std::shared_ptr<char> liveness = std::make_shared<char>();
  std::shared_ptr<IPluginKeyboardViewModel> model;
  Pads pads;
};

}  // namespace tesh::bramel
