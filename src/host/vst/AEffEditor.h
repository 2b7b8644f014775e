// The base class of an editor in a host's window.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/vst/VstRecords.h"

namespace tesh::bramel::vst {

class AudioEffect;

/// Owned by an AudioEffect. Called on the thread of the host's window.
class AEffEditor {
 public:
  explicit AEffEditor(AudioEffect* owner) : effect(owner) {}
  AEffEditor(const AEffEditor&) = delete;
  AEffEditor& operator=(const AEffEditor&) = delete;
  virtual ~AEffEditor() = default;

  virtual AudioEffect* getEffect() { return effect; }

  /// Points `*rect` at the rectangle, which the editor owns. Null and false if there is none.
  virtual bool getRect(ERect** rect) {
    if (rect != nullptr) {
      *rect = nullptr;
    }
    return false;
  }

  /// Opens the editor inside the host's window, a handle of the system's own type. False on failure.
  virtual bool open(void* window) {
    systemWindow = window;
    return false;
  }
  virtual void close() { systemWindow = nullptr; }
  virtual bool isOpen() { return systemWindow != nullptr; }
  virtual void idle() {}

  /// Return true if the editor has used the key, the wheel or the knob mode.
  virtual bool onKeyDown(VstKeyCode&) { return false; }
  virtual bool onKeyUp(VstKeyCode&) { return false; }
  virtual bool onWheel(float) { return false; }
  virtual bool setKnobMode(std::int32_t) { return false; }

  /// Sets the number of screen pixels per pixel of the editor, above 0. True if the editor follows; its rectangle has
  /// then changed.
  virtual bool setContentScale(float) { return false; }

 protected:
  AudioEffect* effect;
  void* systemWindow = nullptr;  ///< Null while closed.
};

}  // namespace tesh::bramel::vst
