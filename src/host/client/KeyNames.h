// The interface by which the plug-in wrappers, as changed by cmake/juce-7.0.5, ask for the names of the keys.
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/RealTime.h"

namespace tesh::bramel::vst {

/// A processor whose keys have names, which change.
class KeyNames {
 public:
  virtual ~KeyNames() = default;

  /// The name, in UTF-8, of the sound that a key from 0 to 127 plays now; empty if it plays none. Not on the audio
  /// thread.
  virtual std::string keyName(int key) const = 0;

  /// The host has moved the parameter with this index in its own window. If that may change a key's name, the message
  /// thread soon tells the processor's listeners that texts of parameters have changed. Not on the audio thread.
  virtual void hostMoved(int parameterIndex) = 0;

  /// Whether a name may have changed since the last call. One thread at a time, the audio thread too.
  virtual bool takeNamesChanged() SIVRAY_NONBLOCKING = 0;
};

}  // namespace tesh::bramel::vst
