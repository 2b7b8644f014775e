// The base of an editor that lives in a host's window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

class AudioEffect;

/// The message thread's; an AudioEffect owns it.
class AEffEditor {
 public:
  explicit AEffEditor(AudioEffect* owner) : effect(owner) {}
  AEffEditor(const AEffEditor&) = delete;
  AEffEditor& operator=(const AEffEditor&) = delete;
  virtual ~AEffEditor() = default;

  virtual AudioEffect* getEffect() { return effect; }

  /// Gives the editor's rectangle, which stays the editor's; null and false where there is none.
  virtual bool getRect(ERect** rect) {
    if (rect != nullptr) {
      *rect = nullptr;
    }
    return false;
  }

  /// Opens in the host's window `window`.
  virtual bool open(void* window) {
    systemWindow = window;
    return false;
  }
  virtual void close() { systemWindow = nullptr; }
  virtual bool isOpen() { return systemWindow != nullptr; }
  virtual void idle() {}

  /// True where the editor has used the key, the wheel or the mode.
  virtual bool onKeyDown(VstKeyCode&) { return false; }
  virtual bool onKeyUp(VstKeyCode&) { return false; }
  virtual bool onWheel(float) { return false; }
  virtual bool setKnobMode(std::int32_t) { return false; }

  /// How many pixels the host gives to one of the editor's units, above 0. True where the editor follows it: its
  /// rectangle has then changed.
  virtual bool setContentScale(float) { return false; }

 protected:
  AudioEffect* effect;
  void* systemWindow = nullptr;  ///< Null while closed.
};

}  // namespace tesh::bramel::vst
