// Notifications to the keyboard, or row of pads.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>

namespace tesh::bramel {

class IPluginKeyboardViewModel;

/// Called on the message thread.
class IPluginKeyboardViewModelListener {
 public:
  virtual ~IPluginKeyboardViewModelListener() = default;

  /// A weak pointer to this object, which expires with it. May share its count with a token that the object holds.
  virtual std::weak_ptr<IPluginKeyboardViewModelListener> getWeakSelf() = 0;

  virtual void onKeyboardLayoutChanged(IPluginKeyboardViewModel& model) { static_cast<void>(model); }
  virtual void onOctaveChanged(IPluginKeyboardViewModel& model) { static_cast<void>(model); }
  virtual void onChordModeChanged(IPluginKeyboardViewModel& model) { static_cast<void>(model); }
  // Notes from the host; `note` is 0 to 127.
  virtual void onNoteOn(IPluginKeyboardViewModel& model, std::int32_t note) {
    static_cast<void>(model);
    static_cast<void>(note);
  }
  virtual void onNoteOff(IPluginKeyboardViewModel& model, std::int32_t note) {
    static_cast<void>(model);
    static_cast<void>(note);
  }
};

}  // namespace tesh::bramel
